// How the menus take the keyboard, as in GNOME and KDE programs. Private to platform/qt.
//
// Access keys. Every shown menu of a bar and every shown item of a menu gets one, by one rule:
// the first letter or digit of its caption that no shown caption before it in the same menu
// took, case aside. Alt with it opens a menu of the bar; the key alone chooses an item of an
// open menu. So the bar's File, Edit and Window take F, E and W, and in Edit, Undo takes U, Cut
// (coming first) C, Copy o and Paste P: no clash in any menu, at the price of Copy's C that some
// desktops give it. A caption whose letters are all taken gets none. Only the Qt titles carry the
// "&": the captions in the tree stay as the system's code wrote them.
//
// F10 opens the first shown menu of the window's bar, as a click on its title does. A window that
// shows no bar of its own (the about window, the information window: they answer the shortcuts
// of the application's bar only) gives F10 no meaning of its own; there it is a function key like
// any other, the window's KeyDown.
//
// The Edit menu and the keyboard. Walking the menus by key (after F10, Alt with an access key or
// a tap of Alt, then the arrows) Qt gives the keyboard to the bar or to the open menu, and hands
// it back to the widget it took it from when the menus close. Meanwhile the Edit menu works on
// that widget: its items are enabled by that field's state and Copy copies its selection.
#pragma once

#include <QString>

class QMenuBar;
class QWidget;

namespace platform::qt {

// The access keys of one menu, given caption by caption in the order the menu shows them.
class AccessKeys {
  public:
    // The caption as a Qt title: an "&" before its access key, its own "&"s doubled so that
    // they show as they are.
    QString Title(const QString& caption);

  private:
    QString taken_;  // the access keys of the earlier captions, in lower case
};

// F10 for `bar`'s window, and from now on the bookkeeping of EditedWidget; once per bar.
void TakeMenuKeys(QMenuBar& bar);

// The widget the Edit menu works on: the focused one or, while the bar or a menu has the
// keyboard, the one they took it from.
QWidget* EditedWidget();

}  // namespace platform::qt
