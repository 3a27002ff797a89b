// The controls that show text: labels, text fields and text areas.
#pragma once

#include <functional>
#include <string>

#include "platform/qt/rect_control.h"

namespace platform {

class Label : public Classed<Label, RectControl> {
  public:
    Label();
    // Value (string), TextColor, FontSize, Bold, Italic, Underline, TextAlignment, Multiline, ...
    static const ClassInfo& StaticClass();
    void Value(const std::string& text);
    std::string Value() const;
};

class TextField : public Classed<TextField, RectControl> {
  public:
    TextField();
    // Value (string), ReadOnly, TextColor, BackgroundColor, HasBorder, FontSize, Bold,
    // TextAlignment, Password, MaximumCharactersAllowed, ...
    static const ClassInfo& StaticClass();
    void Text(const std::string& text);  // raises no event
    std::string Text() const;
    bool ReadOnly() const;

    // The key as a string: a printable key gives its character; Backspace 8, Tab 9, Return 13,
    // Escape 27, Left 28, Right 29, Up 30, Down 31, forward Delete 127. Presses with Ctrl, Alt or
    // Meta are shortcuts and never come here. A true result stops the key.
    std::function<bool(TextField&, const std::string&)> KeyDown;
};

class TextArea : public Classed<TextArea, RectControl> {
  public:
    TextArea();
    static const ClassInfo& StaticClass();
    void Text(const std::string& text);
    std::string Text() const;
};

}  // namespace platform
