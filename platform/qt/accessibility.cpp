// What reaches a screen reader. The interfaces come from AccessibleFor (accessible_widgets.h);
// every event Qt tells screen readers passes through TellScreenReaders first, which adds what
// Qt 6.4's AT-SPI bridge leaves out and holds back what only misleads.
#include <QAccessible>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QPointer>
#include <QVariantMap>
#include <QWidget>

#include "platform/qt/accessible_widgets.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/rect_control.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

// Qt's bridge reports a widget shown or hidden as a change of "showing" only. A screen reader
// that first saw the widget hidden keeps it not "visible" in its cache for good, and its review
// of the window (which reads what is both) skips it: the results, the entry fields of a test
// chosen later. So the change of "visible" is sent beside it, on the bridge's own connection
// to the accessibility bus (Qt names it "a11y"), from the object's own path, as Qt sends its
// own state changes.
void TellVisible(QAccessibleInterface* iface, bool visible) {
    QDBusConnection bus(QStringLiteral("a11y"));
    if (iface == nullptr || !bus.isConnected()) {
        return;
    }
    const QString path = QStringLiteral("/org/a11y/atspi/accessible/") +
                         QString::number(QAccessible::uniqueId(iface));
    QDBusMessage change = QDBusMessage::createSignal(
        path, QStringLiteral("org.a11y.atspi.Event.Object"), QStringLiteral("StateChanged"));
    change << QStringLiteral("visible") << int(visible) << 0 << QVariant::fromValue(QDBusVariant(0))
           << QVariantMap();
    bus.send(change);
}

// The widget whose taking of the keyboard screen readers were told last.
QPointer<QObject>& FocusTold() {
    static QPointer<QObject> told;
    return told;
}

// A selection change is told only for the widget that has the keyboard and was said to have it.
// A field that loses the keyboard drops its selection, and screen readers said "unselected" on
// every Tab; a field that takes it selects its text before Qt says it has the focus, and screen
// readers read that selection, short of its name, before the field itself.
bool IsSelectionAside(const QAccessibleEvent& event) {
    const auto* widget = qobject_cast<const QWidget*>(event.object());
    return event.type() == QAccessible::TextSelectionChanged && widget != nullptr &&
           (!widget->hasFocus() || FocusTold() != widget);
}

// Hands the event to Qt's bridge (or to whoever stands in this gate's place, such as a test).
void PassOn(QAccessibleEvent* event) {
    const QAccessible::UpdateHandler standing = QAccessible::installUpdateHandler(nullptr);
    QAccessible::updateAccessibility(event);
    QAccessible::installUpdateHandler(standing);
}

void TellScreenReaders(QAccessibleEvent* event) {
    if (IsSelectionAside(*event)) {
        return;
    }
    if (event->type() == QAccessible::Focus) {
        FocusTold() = event->object();
    }
    const bool shown = event->type() == QAccessible::ObjectShow;
    if (shown || event->type() == QAccessible::ObjectHide) {
        QAccessibleInterface* iface = event->accessibleInterface();
        if (shown && (iface == nullptr || iface->state().invisible)) {
            return;  // shown, but nothing to see (a label in its ground's colour)
        }
        PassOn(event);
        TellVisible(iface, shown);
        return;
    }
    PassOn(event);
}

}  // namespace

namespace qt {

void InstallAccessibility() {
    static bool installed = false;
    if (!installed) {
        QAccessible::installFactory(&AccessibleFor);
        QAccessible::installUpdateHandler(&TellScreenReaders);
        installed = true;
    }
}

}  // namespace qt

void RectControl::AccessibleName(const std::string& name) {
    _UITrap();
    if (widget_ != nullptr) {
        widget_->setAccessibleName(qt::ToQt(name));
    }
}

void Window::AccessibleName(const std::string& name) {
    _UITrap();
    Widget()->setAccessibleName(qt::ToQt(name));
}

}  // namespace platform
