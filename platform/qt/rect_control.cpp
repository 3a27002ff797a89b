#include "platform/qt/rect_control.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTextEdit>
#include <algorithm>
#include <functional>

#include "platform/core/recorder.h"
#include "platform/qt/control_widgets.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/tab_chain.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

const char* Flag(bool value) {
    return value ? "1" : "0";
}

int ToInt(std::int64_t value) {
    return static_cast<int>(std::clamp<std::int64_t>(value, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

void ChangeFont(RectControl& control, const std::function<void(QFont&)>& change) {
    QWidget* widget = control.Widget();
    if (widget == nullptr) {
        return;
    }
    QFont font = widget->font();
    change(font);
    widget->setFont(font);
}

}  // namespace

namespace qt {

double QtPointSize(double recordPoints, const QWidget& widget) {
    const double dpi = widget.logicalDpiY() > 0 ? widget.logicalDpiY() : 96.0;
    return recordPoints * 72.0 / dpi;
}

}  // namespace qt

Control::~Control() = default;

const ClassInfo& Control::StaticClass() {
    static const ClassInfo info{"Control",
                                &Object::StaticClass(),
                                {
                                    Property<&Control::SetName>("Name"),
                                    Property<&Control::SetIndex>("Index"),
                                    // No tab panels, no data binding, and windows of this platform
                                    // do not deactivate their controls with the window.
                                    StoredOnly("TabPanelIndex", Form::Integer),
                                    StoredOnly("AllowAutoDeactivate", Form::Boolean),
                                    StoredOnly("DataSource", Form::String),
                                    StoredOnly("DataField", Form::String),
                                    StoredOnly("Tooltip", Form::String),
                                    StoredOnly("MacProcID", Form::Integer),
                                }};
    return info;
}

void Control::Operation(const std::string& what) const {
    _UITrap();
    recorder::Note(name_ + "." + what);
}

void Control::Attach(Window& window, const std::string& name) {
    window_ = &window;
    name_ = name;
}

RectControl::RectControl(QWidget* widget) : widget_(widget) {
    // Qt deletes the widget with its parent when a parent control's widget goes first.
    QObject::connect(widget_, &QObject::destroyed, [this] { widget_ = nullptr; });
    ApplyFocusPolicy();
}

RectControl::~RectControl() {
    if (widget_ != nullptr) {
        QWidget* widget = widget_;
        widget_ = nullptr;
        delete widget;
    }
}

const ClassInfo& RectControl::StaticClass() {
    static const ClassInfo info{
        "RectControl",
        &Control::StaticClass(),
        {
            Property<&RectControl::SetLeft>("Left"),
            Property<&RectControl::SetTop>("Top"),
            Property<&RectControl::SetWidth>("Width"),
            Property<&RectControl::SetHeight>("Height"),
            Property<&RectControl::SetTabIndex>("TabIndex"),
            Property<&RectControl::SetTabStop>("TabStop"),
            Property<&RectControl::SetEnabled>("Enabled"),
            Property<&RectControl::SetVisible>("Visible"),
            Property<&RectControl::SetInitialParent>("InitialParent"),
            qt::Prop("Tooltip",
                     [](RectControl& c, const std::string& v) {
                         if (c.Widget() != nullptr) {
                             c.Widget()->setToolTip(qt::ToQt(v));
                         }
                     }),
            // "System", or no name, is the desktop's own user-interface font.
            qt::Prop("FontName",
                     [](RectControl& c, const std::string& v) {
                         ChangeFont(c, [&v](QFont& f) {
                             f.setFamily(v.empty() || v == "System" ? QApplication::font().family()
                                                                    : qt::ToQt(v));
                         });
                     }),
            qt::Prop("FontSize",
                     [](RectControl& c, float points) {
                         if (c.Widget() == nullptr) {
                             return;
                         }
                         const double size = points > 0 ? qt::QtPointSize(points, *c.Widget())
                                                        : QApplication::font().pointSizeF();
                         ChangeFont(c, [size](QFont& f) { f.setPointSizeF(size); });
                     }),
            qt::Prop("Bold", [](RectControl& c,
                                bool v) { ChangeFont(c, [v](QFont& f) { f.setBold(v); }); }),
            qt::Prop("Italic", [](RectControl& c,
                                  bool v) { ChangeFont(c, [v](QFont& f) { f.setItalic(v); }); }),
            qt::Prop("Underline",
                     [](RectControl& c, bool v) {
                         ChangeFont(c, [v](QFont& f) { f.setUnderline(v); });
                     }),
            // Sizes are always points; the window never resizes, so the locks never act; Qt
            // draws focus and transparency by its style.
            StoredOnly("FontUnit", Form::SmallEnum),
            StoredOnly("LockLeft", Form::Boolean),
            StoredOnly("LockTop", Form::Boolean),
            StoredOnly("LockRight", Form::Boolean),
            StoredOnly("LockBottom", Form::Boolean),
            StoredOnly("Transparent", Form::Boolean),
            StoredOnly("AllowFocusRing", Form::Boolean),
            StoredOnly("AllowTabs", Form::Boolean),
        }};
    return info;
}

void RectControl::Enabled(bool value) {
    Operation(std::string("Enabled=") + Flag(value));
    SetEnabled(value);
}

bool RectControl::Enabled() const {
    return widget_ != nullptr && !widget_->testAttribute(Qt::WA_ForceDisabled);
}

void RectControl::SetEnabled(bool v) {
    if (widget_ != nullptr) {
        widget_->setEnabled(v);
    }
}

void RectControl::Visible(bool value) {
    Operation(std::string("Visible=") + Flag(value));
    SetVisible(value);
}

bool RectControl::Visible() const {
    return visible_;
}

void RectControl::SetVisible(bool v) {
    visible_ = v;
    // A widget without a parent would show as a window of its own: it waits for Attach.
    if (widget_ != nullptr && widget_->parentWidget() != nullptr) {
        widget_->setVisible(v);
    }
}

void RectControl::SetFocus() {
    Operation("SetFocus");
    if (widget_ != nullptr) {
        widget_->setFocus(Qt::OtherFocusReason);
    }
}

void RectControl::Attach(Window& window, const std::string& name) {
    Control::Attach(window, name);
    Place();
}

void RectControl::SetLeft(std::int64_t v) {
    left_ = v;
    Place();
}

void RectControl::SetTop(std::int64_t v) {
    top_ = v;
    Place();
}

void RectControl::SetWidth(std::int64_t v) {
    width_ = std::max<std::int64_t>(v, 0);
    Place();
}

void RectControl::SetHeight(std::int64_t v) {
    height_ = std::max<std::int64_t>(v, 0);
    Place();
}

void RectControl::SetTabIndex(std::int64_t v) {
    tabIndex_ = v;
    if (window_ != nullptr) {
        qt::RebuildTabChain(*window_);
    }
}

void RectControl::SetTabStop(bool v) {
    tabStop_ = v;
    ApplyFocusPolicy();
}

void RectControl::SetInitialParent(std::string v) {
    initialParent_ = std::move(v);
    Place();
}

void RectControl::EnterFrame(RectControl& frame) {
    enclosure_ = &frame;
    Place();
}

void RectControl::Place() {
    if (window_ == nullptr || widget_ == nullptr || placing_) {
        return;
    }
    placing_ = true;
    QWidget* parent = window_->ContentWidget();
    std::int64_t originLeft = 0, originTop = 0;
    if (!initialParent_.empty() || enclosure_ != nullptr) {
        auto* host = initialParent_.empty()
                         ? enclosure_
                         : dynamic_cast<RectControl*>(window_->_ControlByName(initialParent_));
        // A parent that is not there yet takes the control over when it is added.
        if (host != nullptr && host != this && host->widget_ != nullptr &&
            !widget_->isAncestorOf(host->widget_)) {
            parent = host->widget_;
            originLeft = host->left_;
            originTop = host->top_;
        }
    }
    const bool moved = widget_->parentWidget() != parent;
    if (moved) {
        widget_->setParent(parent);
        // A frame lies beneath the other controls of its parent, so it never takes their clicks.
        if (dynamic_cast<qt::BoxWidget*>(widget_) != nullptr) {
            widget_->lower();
        }
        widget_->setVisible(visible_);
    }
    widget_->setGeometry(ToInt(left_ - originLeft), ToInt(top_ - originTop), ToInt(width_),
                         ToInt(height_));
    for (std::size_t i = 0; i < window_->ControlCount(); ++i) {
        auto* child = dynamic_cast<RectControl*>(window_->ControlAt(i));
        if (child != nullptr && child != this && child->initialParent_ == name_) {
            child->Place();
        }
    }
    if (moved) {
        qt::RebuildTabChain(*window_);
    }
    placing_ = false;
}

// TabStop 0 takes a control out of the Tab chain. A text field stays clickable into; a button
// never takes the focus from a click, so pressing it leaves the caret where the user typed.
void RectControl::ApplyFocusPolicy() {
    if (widget_ == nullptr) {
        return;
    }
    Qt::FocusPolicy policy = Qt::NoFocus;
    if (qobject_cast<QLineEdit*>(widget_) != nullptr ||
        qobject_cast<QTextEdit*>(widget_) != nullptr) {
        policy = tabStop_ ? Qt::StrongFocus : Qt::ClickFocus;
    } else if (qobject_cast<QAbstractButton*>(widget_) != nullptr) {
        policy = tabStop_ ? Qt::TabFocus : Qt::NoFocus;
    } else if (auto* canvas = dynamic_cast<qt::CanvasWidget*>(widget_);
               canvas != nullptr && canvas->allowFocus) {
        policy = tabStop_ ? Qt::StrongFocus : Qt::ClickFocus;
    }
    widget_->setFocusPolicy(policy);
}

}  // namespace platform
