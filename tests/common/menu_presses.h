// The keys that open a menu of the bar from its window, and the menu each opens: F10 the first
// shown one, Alt with a menu's access key that menu.
#pragma once

#include <Qt>
#include <string>

namespace testing_support {

struct MenuPress {
    Qt::Key key;
    Qt::KeyboardModifiers modifiers;
    std::string opens;  // the menu's title, "&" before its access key
};

inline const MenuPress kMenuPresses[] = {{Qt::Key_F10, {}, "&File"},
                                         {Qt::Key_F, Qt::AltModifier, "&File"},
                                         {Qt::Key_E, Qt::AltModifier, "&Edit"},
                                         {Qt::Key_W, Qt::AltModifier, "&Window"}};

}  // namespace testing_support
