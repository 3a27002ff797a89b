// A control with a place on its window and a Qt widget: what every visible control shares.
// Geometry in a record counts from the window's top-left corner, also for a control whose
// InitialParent is another control; the platform converts.
#pragma once

#include <cstdint>
#include <string>

#include "platform/qt/control.h"

class QWidget;

namespace platform {

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

}  // namespace platform
