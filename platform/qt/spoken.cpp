// Fields said by a screen reader once written: the window's status line holds a notification
// that shows itself with the fields' words. Screen readers speak a notification as it appears
// (Orca reads one inside a status line by its words alone) and keep it in their list of
// notifications, so the words can be heard again; nothing on the screen changes.
#include "platform/qt/spoken.h"

#include <QAccessible>
#include <QLineEdit>
#include <QPointer>
#include <QWidget>
#include <QWindow>
#include <algorithm>
#include <memory>

#include "platform/qt/qt_support.h"
#include "platform/qt/rect_control.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

struct Part {
    QString caption;
    QPointer<QLineEdit> field;
    QString after;
};

class StatusAccessible;

// The words last said; showing from the first time they were said.
class NoteAccessible : public QAccessibleInterface {
  public:
    NoteAccessible(QWidget* frame, StatusAccessible* status) : frame_(frame), status_(status) {}
    bool isValid() const override { return !frame_.isNull(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return frame_ ? frame_->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override;
    QAccessibleInterface* child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? words : QString();
    }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override { return {}; }
    QAccessible::Role role() const override { return QAccessible::Notification; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = !said;
        return state;
    }

    QString words;
    bool said = false;

  private:
    QPointer<QWidget> frame_;
    StatusAccessible* status_;
};

// The status line: never drawn, so never showing; it only holds the note.
class StatusAccessible : public QAccessibleInterface {
  public:
    explicit StatusAccessible(QWidget* frame)
        : frame_(frame), note(new NoteAccessible(frame, this)) {
        QAccessible::registerAccessibleInterface(note);
    }
    bool isValid() const override { return !frame_.isNull(); }
    QObject* object() const override { return nullptr; }
    QWindow* window() const override { return frame_ ? frame_->windowHandle() : nullptr; }
    QAccessibleInterface* parent() const override {
        return frame_ ? QAccessible::queryAccessibleInterface(frame_) : nullptr;
    }
    QAccessibleInterface* child(int index) const override { return index == 0 ? note : nullptr; }
    int childCount() const override { return 1; }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return child == note ? 0 : -1;
    }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    QString text(QAccessible::Text) const override { return {}; }
    void setText(QAccessible::Text, const QString&) override {}
    QRect rect() const override { return {}; }
    QAccessible::Role role() const override { return QAccessible::StatusBar; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = true;
        return state;
    }

    QPointer<QWidget> frame_;
    NoteAccessible* note;
};

QAccessibleInterface* NoteAccessible::parent() const {
    return status_;
}

struct SpokenWindow {
    QPointer<QWidget> frame;
    std::vector<Part> parts;
    StatusAccessible* status = nullptr;
    bool pending = false;
};

std::vector<std::unique_ptr<SpokenWindow>>& All() {
    static std::vector<std::unique_ptr<SpokenWindow>> all;
    return all;
}

SpokenWindow* Find(const QWidget* frame) {
    for (auto& spoken : All()) {
        if (spoken->frame == frame) {
            return spoken.get();
        }
    }
    return nullptr;
}

void Forget(const SpokenWindow* gone) {
    for (QAccessibleInterface* iface : {static_cast<QAccessibleInterface*>(gone->status->note),
                                        static_cast<QAccessibleInterface*>(gone->status)}) {
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(iface));
    }
    std::erase_if(All(), [gone](const auto& spoken) { return spoken.get() == gone; });
}

QString Words(const SpokenWindow& spoken) {
    QStringList said;
    for (const Part& part : spoken.parts) {
        if (part.field.isNull() || !part.field->isVisible() || part.field->text().isEmpty()) {
            continue;
        }
        QStringList words{part.caption, part.field->text(), part.after};
        words.removeAll(QString());
        said << words.join(QChar(' '));
    }
    return said.join(QLatin1String(", "));
}

std::function<void(const std::string&)>& Hook() {
    static std::function<void(const std::string&)> hook;
    return hook;
}

void Say(SpokenWindow& spoken) {
    spoken.pending = false;
    const QString words = Words(spoken);
    if (words.isEmpty()) {
        return;
    }
    NoteAccessible& note = *spoken.status->note;
    if (note.said) {  // a note already shown is said again only by showing it anew
        note.said = false;
        QAccessibleEvent hide(&note, QAccessible::ObjectHide);
        QAccessible::updateAccessibility(&hide);
    }
    note.words = words;
    note.said = true;
    QAccessibleEvent show(&note, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&show);
    if (Hook()) {
        Hook()(qt::FromQt(words));
    }
}

}  // namespace

void SpeakWhenWritten(Window& window, std::vector<SpokenField> fields) {
    _UITrap();
    QWidget* frame = window.Widget();
    SpokenWindow* spoken = Find(frame);
    if (spoken == nullptr) {
        All().push_back(std::make_unique<SpokenWindow>());
        spoken = All().back().get();
        spoken->frame = frame;
        spoken->status = new StatusAccessible(frame);
        QAccessible::registerAccessibleInterface(spoken->status);
        QObject::connect(frame, &QObject::destroyed, [spoken] { Forget(spoken); });
    }
    spoken->parts.clear();
    for (const SpokenField& field : fields) {
        auto* control = dynamic_cast<RectControl*>(window._ControlByName(field.field));
        auto* edit = control != nullptr ? qobject_cast<QLineEdit*>(control->Widget()) : nullptr;
        spoken->parts.push_back({qt::ToQt(field.caption), edit, qt::ToQt(field.after)});
    }
}

void SetSpokenHook(std::function<void(const std::string& words)> hook) {
    Hook() = std::move(hook);
}

namespace qt {

QAccessibleInterface* StatusOf(const QWidget& frame) {
    const SpokenWindow* spoken = Find(&frame);
    return spoken != nullptr ? spoken->status : nullptr;
}

void NoteTextWritten(const QWidget& field) {
    SpokenWindow* spoken = Find(field.window());
    if (spoken == nullptr || spoken->pending ||
        std::none_of(spoken->parts.begin(), spoken->parts.end(),
                     [&field](const Part& part) { return part.field == &field; })) {
        return;
    }
    spoken->pending = true;
    RunAfterThisEvent([frame = QPointer<QWidget>(spoken->frame)] {
        if (SpokenWindow* still = frame ? Find(frame) : nullptr) {
            Say(*still);
        }
    });
}

}  // namespace qt
}  // namespace platform
