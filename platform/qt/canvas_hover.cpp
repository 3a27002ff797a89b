#include "platform/qt/canvas_hover.h"

#include <QApplication>
#include <QCursor>
#include <QEnterEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QSet>
#include <QWindow>
#include <algorithm>
#include <optional>
#include <vector>

#include "platform/qt/app_wide.h"
#include "platform/qt/canvas.h"
#include "platform/qt/control_widgets.h"
#include "platform/qt/runtime.h"

namespace platform::qt {
namespace {

// Every pointer event that reaches a window of the application passes here first.
class PointerWatcher : public ApplicationFilter {
  public:
    void Follow(CanvasWidget& canvas) { canvases_.emplace_back(&canvas); }

  private:
    friend PointerWatcher& ForThisApplication<PointerWatcher>();
    using ApplicationFilter::ApplicationFilter;

    // Only the window's own events: a widget's Enter and Leave may be made up by Qt.
    void See(QObject* watched, QEvent* event) override {
        if (!watched->isWindowType()) {
            return;
        }
        const QEvent::Type type = event->type();
        if (type == QEvent::MouseMove) {
            PointerAt(watched, static_cast<QMouseEvent*>(event)->position());
        } else if (type == QEvent::Enter) {
            PointerAt(watched, static_cast<QEnterEvent*>(event)->position());
        } else if (type == QEvent::Leave) {
            PointerAt(watched, std::nullopt);
        } else if (type == QEvent::WindowBlocked) {
            blocked_.insert(watched);
        } else if (type == QEvent::WindowUnblocked && blocked_.remove(watched)) {
            PointerAt(watched, PointerIn(*static_cast<QWindow*>(watched)));
        }
    }

    // Where the pointer is in the window, by the pointer's last place that the windowing system
    // gave, or nowhere in it. A window blocked by a message box hears no pointer events, and on
    // Wayland none comes when the box goes while the pointer rests.
    static std::optional<QPointF> PointerIn(const QWindow& window) {
        const QPoint place = window.mapFromGlobal(QCursor::pos());
        if (!QRect(QPoint(), window.size()).contains(place)) {
            return std::nullopt;
        }
        return place;
    }

    // The pointer at that place of the window (in its own points), or gone from it.
    void PointerAt(QObject* window, std::optional<QPointF> place) {
        std::erase_if(canvases_, [](const QPointer<CanvasWidget>& c) { return c.isNull(); });
        // A copy: a handler may make or end canvases.
        const std::vector<QPointer<CanvasWidget>> canvases = canvases_;
        for (const QPointer<CanvasWidget>& canvas : canvases) {
            if (canvas.isNull() || canvas->window()->windowHandle() != window) {
                continue;
            }
            const bool over =
                place && canvas->isVisible() &&
                canvas->rect().contains(canvas->mapFrom(canvas->window(), place->toPoint()));
            Tell(*canvas, over);
        }
    }

    static void Tell(CanvasWidget& canvas, bool over) {
        if (canvas.pointerOver == over || canvas.owner == nullptr) {
            return;
        }
        canvas.pointerOver = over;
        Canvas* owner = canvas.owner;
        if (over ? owner->MouseEnter : owner->MouseExit) {
            ProtectedCall([owner, over] { (over ? owner->MouseEnter : owner->MouseExit)(*owner); });
        }
    }

    std::vector<QPointer<CanvasWidget>> canvases_;
    // The windows a message box blocks now; compared, never used.
    QSet<const QObject*> blocked_;
};

}  // namespace

void FollowPointer(CanvasWidget& canvas) {
    ForThisApplication<PointerWatcher>().Follow(canvas);
}

}  // namespace platform::qt
