#include "platform/qt/appearance.h"

#include <QCoreApplication>
#include <QEvent>
#include <QMetaObject>
#include <QObject>

#include <vector>

#include "platform/qt/runtime.h"

namespace platform {

namespace {

// Watches every event of the application. Qt tells one change of the desktop in several events:
// a new theme reaches every window of the application at once, and a new palette reaches the
// application object first, then every window and widget in later turns. So the watcher takes the
// theme from the windows and the palette from the application object alone, and reports each
// kind once, in a queued call after the last window has had it. PaletteChange is not watched: a
// widget gets it whenever code sets its colours, which is no change of the desktop.
class AppearanceWatcher : public QObject {
  public:
    AppearanceWatcher(std::function<void(const std::string&)> observer, QObject* parent)
        : QObject(parent), observer_(std::move(observer)) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ThemeChange && watched->isWindowType()) {
            Note(kAppearanceTheme);
        } else if (event->type() == QEvent::ApplicationPaletteChange &&
                   watched == QCoreApplication::instance()) {
            Note(kAppearanceColors);
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    void Note(const char* kind) {
        for (const std::string& noted : pending_) {
            if (noted == kind) {
                return;
            }
        }
        pending_.emplace_back(kind);
        if (pending_.size() == 1) {
            QMetaObject::invokeMethod(
                this, [this] { Report(); }, Qt::QueuedConnection);
        }
    }

    void Report() {
        std::vector<std::string> kinds;
        kinds.swap(pending_);
        for (const std::string& kind : kinds) {
            ProtectedCall([&] { observer_(kind); });
        }
    }

    std::function<void(const std::string&)> observer_;
    std::vector<std::string> pending_;  // kinds noted since the last report, in order
};

}  // namespace

bool OnDesktopAppearanceChange(std::function<void(const std::string& kind)> observer) {
    QCoreApplication* app = QCoreApplication::instance();
    if (app == nullptr) {
        return false;
    }
    // The application owns the watcher, so it ends with the run.
    app->installEventFilter(new AppearanceWatcher(std::move(observer), app));
    return true;
}

}  // namespace platform
