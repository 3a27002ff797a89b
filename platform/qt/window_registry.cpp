#include "platform/qt/window_registry.h"

#include <QObject>
#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/qt/qt_support.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

// Runs an action once control is back in the event loop that asked for it, never inside the
// event Qt is dispatching now: Qt goes on using the windows of that event after our handlers
// return. (Qt's deferred deletion; a nested loop, as a message box runs, does not run it early.)
class AfterThisEvent : public QObject {
  public:
    static void Run(std::function<void()> action) {
        (new AfterThisEvent(std::move(action)))->deleteLater();
    }
    ~AfterThisEvent() override;

  private:
    explicit AfterThisEvent(std::function<void()> action);
    std::function<void()> action_;
};

struct Registry {
    struct Entry {
        std::string key;
        std::unique_ptr<Window> window;
    };
    std::vector<Entry> owned;  // the windows built by ImplicitWindow
    std::map<std::string, std::function<std::unique_ptr<Window>()>, std::less<>> classes;
    std::vector<AfterThisEvent*> pending;  // the end of the run runs what is left
};

Registry& Reg() {
    static Registry registry;
    return registry;
}

AfterThisEvent::AfterThisEvent(std::function<void()> action) : action_(std::move(action)) {
    Reg().pending.push_back(this);
}

AfterThisEvent::~AfterThisEvent() {
    std::erase(Reg().pending, this);
    action_();
}

}  // namespace

Window* _GetImplicitWindow(std::string_view fullClassName) {
    for (const auto& entry : Reg().owned) {
        if (entry.key == fullClassName) {
            return entry.window.get();
        }
    }
    return nullptr;
}

void RegisterWindowClass(std::string_view fullClassName,
                         std::function<std::unique_ptr<Window>()> make) {
    Reg().classes.try_emplace(std::string(fullClassName), std::move(make));
}

Window& ImplicitWindow(std::string_view fullClassName) {
    if (Window* living = _GetImplicitWindow(fullClassName)) {
        return *living;
    }
    Registry& reg = Reg();
    auto found = reg.classes.find(fullClassName);
    if (found == reg.classes.end() || !found->second) {
        throw NilObjectException("No window class is registered as " + std::string(fullClassName) +
                                 ".");
    }
    std::unique_ptr<Window> made = found->second();
    Window& window = NotNil(made.get());
    reg.owned.push_back({std::string(fullClassName), std::move(made)});
    window.Constructor();
    return window;
}

void DestroyAllWindows() {
    Registry& reg = Reg();
    auto owned = std::move(reg.owned);
    reg.owned.clear();
    while (!owned.empty()) {
        owned.pop_back();
    }
    while (!reg.pending.empty()) {
        delete reg.pending.back();  // runs it and takes it off the list
    }
}

namespace qt {

void RunAfterThisEvent(std::function<void()> action) {
    AfterThisEvent::Run(std::move(action));
}

void EndAfterThisEvent(Window& window) {
    Registry& reg = Reg();
    auto entry =
        std::find_if(reg.owned.begin(), reg.owned.end(),
                     [&window](const Registry::Entry& e) { return e.window.get() == &window; });
    if (entry != reg.owned.end()) {
        std::shared_ptr<Window> closed = std::move(entry->window);
        reg.owned.erase(entry);
        AfterThisEvent::Run([closed]() mutable { closed.reset(); });  // never inside its own event
    }
}

}  // namespace qt

}  // namespace platform
