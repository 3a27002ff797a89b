#include "platform/qt/controls.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFile>
#include <QFontMetricsF>
#include <QImage>
#include <QImageReader>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <vector>

#include "platform/core/recorder.h"
#include "platform/qt/canvas_hover.h"
#include "platform/qt/control_widgets.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace platform {

struct Picture::Impl {
    QImage image;
    std::string description;
};

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

QString CaptionText(const std::string& caption) {
    return ToQt(caption).replace(QLatin1Char('&'), QLatin1String("&&"));
}

std::string CaptionOf(const QString& text) {
    return FromQt(QString(text).replace(QLatin1String("&&"), QLatin1String("&")));
}

void SetTextColour(QWidget& widget, Colour colour) {
    QPalette palette = widget.palette();
    const QColor qcolour = QColor::fromRgb(colour.rgb);
    // The record's colour holds in every state: a label that is never enabled still draws in it.
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        palette.setColor(group, QPalette::WindowText, qcolour);
        palette.setColor(group, QPalette::Text, qcolour);
        palette.setColor(group, QPalette::ButtonText, qcolour);
    }
    widget.setPalette(palette);
}

void SetBaseColour(QWidget& widget, Colour colour) {
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Base, QColor::fromRgb(colour.rgb));
    widget.setPalette(palette);
}

// 0 is the default (left), 1 left, 2 centre, 3 right.
Qt::Alignment HorizontalAlignment(std::int64_t textAlignment) {
    switch (textAlignment) {
        case 2:
            return Qt::AlignHCenter;
        case 3:
            return Qt::AlignRight;
        default:
            return Qt::AlignLeft;
    }
}

double QtPointSize(double recordPoints, const QWidget& widget) {
    const double dpi = widget.logicalDpiY() > 0 ? widget.logicalDpiY() : 96.0;
    return recordPoints * 72.0 / dpi;
}

namespace {

bool Encloses(const RectControl& frame, const RectControl& control) {
    return control.Left() >= frame.Left() && control.Top() >= frame.Top() &&
           control.Left() + control.Width() <= frame.Left() + frame.Width() &&
           control.Top() + control.Height() <= frame.Top() + frame.Height();
}

std::vector<RectControl*> RectControls(const Window& window) {
    std::vector<RectControl*> controls;
    for (std::size_t i = 0; i < window.ControlCount(); ++i) {
        auto* rect = dynamic_cast<RectControl*>(window.ControlAt(i));
        if (rect != nullptr && rect->Widget() != nullptr) {
            controls.push_back(rect);
        }
    }
    return controls;
}

// The frame on the window's content whose rectangle holds the control, or nullptr.
RectControl* EnclosingFrame(const std::vector<RectControl*>& controls, const RectControl& control,
                            const QWidget* content) {
    for (RectControl* frame : controls) {
        if (frame != &control && dynamic_cast<BoxWidget*>(frame->Widget()) != nullptr &&
            frame->Widget()->parentWidget() == content && Encloses(*frame, control)) {
            return frame;
        }
    }
    return nullptr;
}

}  // namespace

// Radio buttons drawn inside a frame are that frame's group, as a reader sees them: they move
// into the frame's widget, so a screen reader hears the frame's name as the group's name and
// the frame's focus goes to them. Their place on the window does not change.
void GatherRadioButtonsIntoFrames(Window& window) {
    const std::vector<RectControl*> controls = RectControls(window);
    for (RectControl* control : controls) {
        if (dynamic_cast<RadioWidget*>(control->Widget()) == nullptr ||
            !control->InitialParent().empty()) {
            continue;
        }
        if (RectControl* frame = EnclosingFrame(controls, *control, window.ContentWidget())) {
            control->EnterFrame(*frame);
        }
    }
}

// The Tab chain follows reading order. On the window's content, the frames and the controls
// outside any frame follow each other top to bottom, then left to right; a frame brings the
// controls inside it, first its own children by TabIndex (creation order breaks ties), then
// those that lie within its rectangle on the window, by TabIndex. The records number some frames
// against reading order ("Sample 2" before "Sample 1"), which Tab does not follow. Whether Tab
// stops at a control is its focus policy (TabStop). The radio buttons of one parent are one
// stop, as on any desktop: the one chosen (or focused) last; arrows move within them.
std::vector<QWidget*> TabChain(const Window& window) {
    const std::vector<RectControl*> controls = RectControls(window);
    const QWidget* content = window.ContentWidget();
    auto byTabIndex = [](const RectControl* a, const RectControl* b) {
        return a->TabIndex() < b->TabIndex();
    };
    auto childrenOf = [&](const QWidget* parent) {
        std::vector<RectControl*> children;
        for (RectControl* control : controls) {
            if (control->Widget()->parentWidget() == parent) {
                children.push_back(control);
            }
        }
        return children;
    };

    std::vector<QWidget*> chain;
    std::function<void(RectControl*)> visit = [&](RectControl* control) {
        const std::size_t before = chain.size();
        std::vector<RectControl*> inside = childrenOf(control->Widget());
        std::stable_sort(inside.begin(), inside.end(), byTabIndex);
        for (RectControl* child : inside) {
            visit(child);
        }
        // A frame is no tab stop: only the controls that hold no others are chained.
        if (chain.size() == before) {
            chain.push_back(control->Widget());
        }
    };

    std::vector<RectControl*> top = childrenOf(content);
    std::map<RectControl*, std::vector<RectControl*>> held;  // frame -> window controls within it
    std::vector<RectControl*> blocks;
    for (RectControl* control : top) {
        if (RectControl* frame = EnclosingFrame(controls, *control, content)) {
            held[frame].push_back(control);
        } else {
            blocks.push_back(control);
        }
    }
    std::stable_sort(blocks.begin(), blocks.end(), [](const RectControl* a, const RectControl* b) {
        return a->Top() != b->Top() ? a->Top() < b->Top() : a->Left() < b->Left();
    });
    for (RectControl* block : blocks) {
        visit(block);
        std::vector<RectControl*>& within = held[block];
        std::stable_sort(within.begin(), within.end(), byTabIndex);
        for (RectControl* control : within) {
            visit(control);
        }
    }
    return chain;
}

void RebuildTabChain(Window& window) {
    const std::vector<QWidget*> chain = TabChain(window);
    for (std::size_t i = 1; i < chain.size(); ++i) {
        QWidget::setTabOrder(chain[i - 1], chain[i]);
    }
}

namespace {

bool TakesTab(const QWidget& widget) {
    return (widget.focusPolicy() & Qt::TabFocus) != 0;
}

// The radio buttons of one group are one stop: the chosen one, or the first of a group where
// none is chosen. Qt moves the Tab focus policy among the buttons of a group by itself, so the
// group takes Tab where any of its buttons does.
bool IsRadioStop(const QRadioButton& radio, const std::vector<QWidget*>& chain) {
    if (!radio.autoExclusive()) {
        return TakesTab(radio);
    }
    const QRadioButton* first = nullptr;
    const QRadioButton* chosen = nullptr;
    bool groupTakesTab = false;
    for (QWidget* other : chain) {
        auto* sibling = qobject_cast<QRadioButton*>(other);
        if (sibling == nullptr || sibling->parentWidget() != radio.parentWidget() ||
            !sibling->autoExclusive() || !sibling->isVisible()) {
            continue;
        }
        first = first != nullptr ? first : sibling;
        chosen = sibling->isChecked() ? sibling : chosen;
        groupTakesTab = groupTakesTab || TakesTab(*sibling);
    }
    return groupTakesTab && &radio == (chosen != nullptr ? chosen : first);
}

bool IsTabStop(QWidget& widget, const std::vector<QWidget*>& chain) {
    if (!widget.isVisible() || !widget.isEnabled()) {
        return false;
    }
    auto* radio = qobject_cast<QRadioButton*>(&widget);
    return radio != nullptr ? IsRadioStop(*radio, chain) : TakesTab(widget);
}

}  // namespace

// Tab and Shift+Tab go through the window's own chain, not Qt's: Qt keeps its chain in the order
// widgets were made and moved, and re-ordering it pairwise does not hold where frames hold some
// controls and not others.
bool MoveFocusAlongTabChain(const Window& window, bool forward) {
    const std::vector<QWidget*> chain = TabChain(window);
    const auto count = static_cast<std::ptrdiff_t>(chain.size());
    if (count == 0) {
        return false;
    }
    const auto at = std::find(chain.begin(), chain.end(), QApplication::focusWidget());
    std::ptrdiff_t index = at == chain.end() ? (forward ? -1 : count) : at - chain.begin();
    for (std::ptrdiff_t step = 0; step < count; ++step) {
        index = ((forward ? index + 1 : index - 1) % count + count) % count;
        if (IsTabStop(*chain[std::size_t(index)], chain)) {
            chain[std::size_t(index)]->setFocus(forward ? Qt::TabFocusReason
                                                        : Qt::BacktabFocusReason);
            return true;
        }
    }
    return false;
}

// A label is passive: the pointer and its presses go through it to what lies beneath (a canvas
// it overlaps keeps the pointer, a frame or the window gets the press), unless it is selectable.
LabelWidget::LabelWidget() {
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void LabelWidget::mousePressEvent(QMouseEvent* event) {
    if (textInteractionFlags() & Qt::TextSelectableByMouse) {
        QLabel::mousePressEvent(event);
        return;
    }
    event->ignore();
}

void BoxWidget::mousePressEvent(QMouseEvent* event) {
    if (owner != nullptr && owner->MouseDown) {
        GroupBox* box = owner;
        const QPoint at = event->position().toPoint();
        bool took = false;
        ProtectedCall([box, at, &took] { took = box->MouseDown(*box, at.x(), at.y()); });
        if (took) {
            event->accept();
            return;
        }
    }
    event->ignore();  // on to the window
}

// The layouts were drawn for narrower fonts than this desktop's: a line of text that does not fit
// its label is drawn smaller until it does, rather than cut off.
void LabelWidget::paintEvent(QPaintEvent* event) {
    const QRectF area = contentsRect();
    QFont fitted = font();
    if (wordWrap() || text().isEmpty() ||
        QFontMetricsF(fitted).horizontalAdvance(text()) <= area.width()) {
        QLabel::paintEvent(event);
        return;
    }
    const double smallest = fitted.pointSizeF() * 0.6;
    while (fitted.pointSizeF() > smallest &&
           QFontMetricsF(fitted).horizontalAdvance(text()) > area.width()) {
        fitted.setPointSizeF(fitted.pointSizeF() * 0.95);
    }
    QPainter painter(this);
    painter.setFont(fitted);
    painter.setPen(
        palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::WindowText));
    painter.drawText(area, int(alignment()), text());
}

SeparatorWidget::SeparatorWidget() {
    setFrameShape(QFrame::HLine);
    setFrameShadow(QFrame::Sunken);
}

void SeparatorWidget::resizeEvent(QResizeEvent* event) {
    setFrameShape(width() >= height() ? QFrame::HLine : QFrame::VLine);
    QFrame::resizeEvent(event);
}

void SeparatorWidget::mousePressEvent(QMouseEvent* event) {
    event->ignore();
}

CanvasWidget::CanvasWidget(Canvas* canvas) : OwnedWidget(canvas) {
    FollowPointer(*this);
}

// The picture at (0,0) at its size in points; what lies outside the canvas is clipped by Qt.
void CanvasWidget::paintEvent(QPaintEvent* /*event*/) {
    if (image.isNull()) {
        return;
    }
    QPainter painter(this);
    painter.drawImage(0, 0, ForScreen());
}

// Where the screen's scale is not the picture's own (the @2x picture at 125% or 150%), the picture
// resampled once, smoothly, to the screen pixels it covers: drawn pixel by pixel, a scaled
// picture has jagged edges. Kept until the picture or the scale changes.
const QImage& CanvasWidget::ForScreen() {
    const qreal scale = devicePixelRatioF();
    if (image.devicePixelRatio() == scale) {
        return image;
    }
    if (resampledFrom != image.cacheKey() || resampled.devicePixelRatio() != scale) {
        resampled = image.scaled((image.deviceIndependentSize() * scale).toSize(),
                                 Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        resampled.setDevicePixelRatio(scale);
        resampledFrom = image.cacheKey();
    }
    return resampled;
}

void CanvasWidget::mousePressEvent(QMouseEvent* event) {
    event->ignore();
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

Label::Label() : Classed(new qt::LabelWidget) {}

const ClassInfo& Label::StaticClass() {
    static const ClassInfo info{
        "Label",
        &RectControl::StaticClass(),
        {
            qt::Prop("Value",
                     [](Label& c, const std::string& v) {
                         static_cast<QLabel*>(c.Widget())->setText(qt::ToQt(v));
                     }),
            qt::Prop("TextColor", [](Label& c, Colour v) { qt::SetTextColour(*c.Widget(), v); }),
            qt::Prop("TextAlignment",
                     [](Label& c, std::int64_t v) {
                         auto* label = static_cast<QLabel*>(c.Widget());
                         label->setAlignment(qt::HorizontalAlignment(v) |
                                             (label->alignment() & Qt::AlignVertical_Mask));
                     }),
            // One line is centred in the label's height; several lines start at its top.
            qt::Prop("MultiLine",
                     [](Label& c, bool v) {
                         auto* label = static_cast<QLabel*>(c.Widget());
                         label->setWordWrap(v);
                         label->setAlignment((label->alignment() & Qt::AlignHorizontal_Mask) |
                                             (v ? Qt::AlignTop : Qt::AlignVCenter));
                     }),
            qt::Prop("Selectable",
                     [](Label& c, bool v) {
                         static_cast<QLabel*>(c.Widget())
                             ->setTextInteractionFlags(v ? Qt::TextSelectableByMouse
                                                         : Qt::NoTextInteraction);
                         c.Widget()->setAttribute(Qt::WA_TransparentForMouseEvents, !v);
                     }),
        }};
    return info;
}

void Label::Value(const std::string& text) {
    Operation("Value=" + text);
    static_cast<QLabel*>(widget_)->setText(qt::ToQt(text));
}

std::string Label::Value() const {
    _UITrap();
    return qt::FromQt(static_cast<QLabel*>(widget_)->text());
}

GroupBox::GroupBox() : Classed(new qt::BoxWidget(this)) {}

const ClassInfo& GroupBox::StaticClass() {
    static const ClassInfo info{
        "GroupBox",
        &RectControl::StaticClass(),
        {
            qt::Prop("Caption",
                     [](GroupBox& c, const std::string& v) {
                         static_cast<QGroupBox*>(c.Widget())->setTitle(qt::CaptionText(v));
                     }),
        }};
    return info;
}

std::string GroupBox::Caption() const {
    return qt::CaptionOf(static_cast<QGroupBox*>(widget_)->title());
}

Separator::Separator() : Classed(new qt::SeparatorWidget) {}

const ClassInfo& Separator::StaticClass() {
    static const ClassInfo info{"Separator", &RectControl::StaticClass(), {}};
    return info;
}

Canvas::Canvas() : Classed(new qt::CanvasWidget(this)) {}

const ClassInfo& Canvas::StaticClass() {
    static const ClassInfo info{
        "Canvas",
        &RectControl::StaticClass(),
        {
            qt::Prop("AllowFocus",
                     [](Canvas& c, bool v) {
                         static_cast<qt::CanvasWidget*>(c.Widget())->allowFocus = v;
                         c.SetTabStop(c.TabStop());  // the focus policy follows
                     }),
            // Qt paints every widget double-buffered.
            StoredOnly("DoubleBuffer", Form::Boolean),
        }};
    return info;
}

void Canvas::Backdrop(Picture* picture) {
    _UITrap();
    auto* canvas = static_cast<qt::CanvasWidget*>(widget_);
    canvas->picture = picture;
    canvas->image = picture != nullptr ? picture->Data().image : QImage();
    canvas->setAccessibleName(picture != nullptr ? qt::ToQt(picture->Description()) : QString());
    canvas->update();
}

Picture* Canvas::Backdrop() const {
    return static_cast<qt::CanvasWidget*>(widget_)->picture;
}

Picture::Picture() : impl_(std::make_unique<Impl>()) {}

Picture::~Picture() = default;

const ClassInfo& Picture::StaticClass() {
    static const ClassInfo info{"Picture", &Object::StaticClass(), {}};
    return info;
}

QImage qt::ReadPng(const QString& path) {
    QImageReader reader(path, "png");
    reader.setAutoDetectImageFormat(false);
    QImage image = reader.read();
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    return image;
}

// On a dense screen the "@2x" variant of a picture (tlarge@2x.png beside tlarge.png) is shown
// at the same size in points, so it stays sharp; without one the picture is scaled up. Asked
// only where it exists: Qt's reader warns on stderr about a file it cannot open.
static QImage ReadSharpest(const std::filesystem::path& path) {
    if (qApp != nullptr && qApp->devicePixelRatio() > 1.0) {
        auto dense = path;
        dense.replace_filename(path.stem().string() + "@2x" + path.extension().string());
        const QString densePath = QString::fromStdString(dense.string());
        QImage image = QFile::exists(densePath) ? qt::ReadPng(densePath) : QImage();
        if (!image.isNull()) {
            image.setDevicePixelRatio(2.0);
            return image;
        }
    }
    return qt::ReadPng(QString::fromStdString(path.string()));
}

QImage qt::ReadPicture(const std::string& name) {
    // Built into the program as Qt resources (resources/pictures.cmake).
    return name.empty() ? QImage() : ReadSharpest(std::filesystem::path(":/korvane") / name);
}

std::unique_ptr<Picture> Picture::_OpenFromApp(const std::string& name) {
    QImage image = qt::ReadPicture(name);
    if (image.isNull()) {
        return nullptr;  // missing or unreadable: the canvas stays empty
    }
    std::unique_ptr<Picture> picture(new Picture());
    picture->impl_->image = std::move(image);
    return picture;
}

std::int64_t Picture::Width() const {
    return std::lround(impl_->image.deviceIndependentSize().width());
}

void Picture::Description(const std::string& words) {
    impl_->description = words;
}

const std::string& Picture::Description() const {
    return impl_->description;
}

std::int64_t Picture::Height() const {
    return std::lround(impl_->image.deviceIndependentSize().height());
}

}  // namespace platform
