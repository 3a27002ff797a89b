// Controls: each a small class over one Qt widget, owned by its window.
//
// A control is allocated with Window::__New, added with Window::_AddControl under its name, and
// given its properties by one layout record (platform/core/record.h) through its class's property
// table. Geometry in a record counts from the window's top-left corner, also for a control whose
// InitialParent is another control; the platform converts. Events are std::function slots that
// the window's code binds with platform::Delegate; the platform raises them through
// ProtectedCall. Every write the system's code makes goes to the recorder when it is on.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "platform/core/object.h"

class QWidget;
class QTimer;

namespace platform {

class Window;
class Picture;

class Control : public Classed<Control> {
  public:
    ~Control() override;
    // Record properties: Name, Index, InitialParent, TabPanelIndex, AllowAutoDeactivate, Tooltip,
    // and the stored-only ones every control record may carry.
    static const ClassInfo& StaticClass();

    const std::string& Name() const { return name_; }
    Window* TrueWindow() const { return window_; }

    void SetName(std::string v) { name_ = std::move(v); }
    void SetIndex(std::int64_t v) { index_ = v; }
    std::int64_t Index() const { return index_; }
    // Called by Window::_AddControl.
    virtual void Attach(Window& window, const std::string& name);

  protected:
    // Begins an operation the system's code calls: the UI trap, then "<name>.<what>" to the
    // recorder.
    void Operation(const std::string& what) const;

    Window* window_ = nullptr;
    std::string name_;
    std::int64_t index_ = 0;
};

class RectControl : public Classed<RectControl, Control> {
  public:
    ~RectControl() override;
    // Record properties: Left, Top, Width, Height, Lock*, TabIndex, TabStop, Enabled, Visible,
    // InitialParent, Transparent, AllowFocusRing, ...
    static const ClassInfo& StaticClass();

    void Enabled(bool value);
    bool Enabled() const;
    void Visible(bool value);  // the control's own flag, whatever its parent shows
    bool Visible() const;
    void SetFocus();
    // The name a screen reader speaks for the control (a field has no caption of its own).
    void AccessibleName(const std::string& name);

    QWidget* Widget() const { return widget_; }
    void Attach(Window& window, const std::string& name) override;

    void SetLeft(std::int64_t v);
    void SetTop(std::int64_t v);
    void SetWidth(std::int64_t v);
    void SetHeight(std::int64_t v);
    void SetTabIndex(std::int64_t v);
    void SetTabStop(bool v);
    void SetInitialParent(std::string v);
    // Enabled and Visible as a layout record sets them: the same effect as the operations above,
    // but not logged by the recorder, which logs only what the system's code does.
    void SetEnabled(bool v);
    void SetVisible(bool v);
    std::int64_t Width() const { return width_; }
    std::int64_t Height() const { return height_; }
    const std::string& InitialParent() const { return initialParent_; }
    std::int64_t Left() const { return left_; }
    std::int64_t Top() const { return top_; }
    std::int64_t TabIndex() const { return tabIndex_; }
    bool TabStop() const { return tabStop_; }
    // Puts the control's widget inside the frame's, keeping its place on the window.
    void EnterFrame(RectControl& frame);

  protected:
    explicit RectControl(QWidget* widget);  // takes ownership of the widget
    QWidget* widget_;
    std::int64_t left_ = 0, top_ = 0, tabIndex_ = 0;
    bool tabStop_ = true;
    std::string initialParent_;
    std::int64_t width_ = 0, height_ = 0;
    bool visible_ = true;  // the control's own flag; Qt's depends on the parents as well

  private:
    // Puts the widget on its parent (the window's content, or the widget of the control that
    // InitialParent names) at its window coordinates, then does the same for its own children.
    void Place();
    void ApplyFocusPolicy();
    bool placing_ = false;
    RectControl* enclosure_ = nullptr;  // the frame it was gathered into, if any
};

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

class GroupBox : public Classed<GroupBox, RectControl> {
  public:
    GroupBox();
    // Caption, Bold, FontSize, ... A group box lies beneath the controls of its window, so a frame
    // drawn around window-level controls never swallows their clicks.
    static const ClassInfo& StaticClass();
    std::string Caption() const;
    std::function<bool(GroupBox&, std::int64_t, std::int64_t)> MouseDown;
};

class Separator : public Classed<Separator, RectControl> {
  public:
    Separator();
    static const ClassInfo& StaticClass();
};

class PushButton : public Classed<PushButton, RectControl> {
  public:
    PushButton();
    // Caption, Default, Cancel, FontSize, Bold, ...
    static const ClassInfo& StaticClass();
    std::string Caption() const;
    bool Default() const;
    std::function<void(PushButton&)> Action;
    // Raised on the press of the mouse button, before any Action of the release.
    std::function<bool(PushButton&, std::int64_t, std::int64_t)> MouseDown;
};

class RadioButton : public Classed<RadioButton, RectControl> {
  public:
    RadioButton();
    // Caption, Value (boolean), ... The radio buttons of one parent exclude each other.
    static const ClassInfo& StaticClass();
    void Value(bool on);  // false really clears it; no Action is raised by code
    bool Value() const;
    std::string Caption() const;
    std::function<void(RadioButton&)>
        Action;  // raised by the user's click, also on a button already on
    std::function<bool(RadioButton&, std::int64_t, std::int64_t)> MouseDown;
};

class Canvas : public Classed<Canvas, RectControl> {
  public:
    Canvas();
    static const ClassInfo& StaticClass();
    // Nil leaves the canvas empty; the picture is not owned. A screen reader hears the canvas as
    // the picture's description.
    void Backdrop(Picture* picture);
    Picture* Backdrop() const;
    std::function<void(Canvas&)> MouseEnter;
    std::function<void(Canvas&)> MouseExit;
};

// A non-visual control. RunMode 0 is off, 1 fires once Period ms after it is started, 2 fires
// every Period ms. Setting RunMode to 1 or 2 starts it; Reset starts the count again.
class Timer : public Classed<Timer, Control> {
  public:
    Timer();
    ~Timer() override;
    // Period, RunMode (alias Mode).
    static const ClassInfo& StaticClass();
    void Mode(std::int64_t mode);
    std::int64_t Mode() const;
    void Period(std::int64_t milliseconds);
    std::int64_t Period() const;
    void Reset();
    bool Armed() const;  // a firing is pending
    std::function<void(Timer&)> Action;

    void SetMode(std::int64_t v) { Mode(v); }
    void SetPeriod(std::int64_t v) { Period(v); }

  private:
    std::unique_ptr<QTimer> timer_;
    std::int64_t mode_ = 0;
};

// A picture from the application's resources.
class Picture : public Classed<Picture> {
  public:
    ~Picture() override;
    static const ClassInfo& StaticClass();
    // The picture of that file name among the pictures built into the program, or nullptr when it
    // is missing or unreadable.
    static std::unique_ptr<Picture> _OpenFromApp(const std::string& name);
    std::int64_t Width() const;
    std::int64_t Height() const;
    // A few words that say what the picture shows, for those who cannot see it.
    void Description(const std::string& words);
    const std::string& Description() const;
    struct Impl;
    const Impl& Data() const { return *impl_; }

  private:
    Picture();
    std::unique_ptr<Impl> impl_;
};

}  // namespace platform
