#include "platform/qt/application.h"

#include "platform/qt/menu.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"

namespace platform {

namespace {

std::unique_ptr<Application>& AppObject() {
    static std::unique_ptr<Application> app;
    return app;
}

// What CurrentThread gives on any thread but the main one: a thread object that is never nil.
Object& OtherThread() {
    static Object thread;
    return thread;
}

}  // namespace

Application::Application() = default;

Application::~Application() = default;

const ClassInfo& Application::StaticClass() {
    static const ClassInfo info{"Application", &Object::StaticClass(), {}};
    return info;
}

void Application::_x_SetVersionData(std::int64_t major, std::int64_t minor, std::int64_t bug,
                                    std::int64_t nonRelease, std::int64_t stage,
                                    const std::string& longVersion, const std::string& shortVersion,
                                    const std::string& packageInfo) {
    _x_mMajorVersion = major;
    _x_mMinorVersion = minor;
    _x_mBugVersion = bug;
    _x_mNonReleaseVersion = nonRelease;
    _x_mStageCode = stage;
    _x_mLongVersion = longVersion;
    _x_mShortVersion = shortVersion;
    _x_mPackageInfo = packageInfo;
}

void Application::MenuBar(platform::MenuBar* bar) {
    _UITrap();
    menuBar_ = bar;
}

Object* Application::CurrentThread() const {
    return qt::OnMainThread() ? nullptr : &OtherThread();
}

void _RuntimeRegisterAppObject(std::unique_ptr<Application> app) {
    AppObject() = std::move(app);
}

Application* getAppObject() {
    return AppObject().get();
}

void DestroyAppObject() {
    AppObject().reset();
}

}  // namespace platform
