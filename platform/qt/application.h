// The application object: one per run, registered with the platform by _RuntimeRegisterAppObject
// and read back with getAppObject. It holds the version data and the default menu bar. A class of
// the system derives from it; it implements an application event by overriding it.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/core/object.h"

namespace platform {

class MenuBar;

class Application : public Classed<Application> {
  public:
    Application();  // ApplicationInitializer: the platform's part of the object's creation
    ~Application() override;
    static const ClassInfo& StaticClass();

    virtual void Constructor() {}

    void _x_SetVersionData(std::int64_t major, std::int64_t minor, std::int64_t bug,
                           std::int64_t nonRelease, std::int64_t stage,
                           const std::string& longVersion, const std::string& shortVersion,
                           const std::string& packageInfo);
    std::int64_t MajorVersion() const { return _x_mMajorVersion; }
    std::int64_t MinorVersion() const { return _x_mMinorVersion; }
    std::int64_t BugVersion() const { return _x_mBugVersion; }
    std::int64_t NonReleaseVersion() const { return _x_mNonReleaseVersion; }
    std::int64_t StageCode() const { return _x_mStageCode; }
    std::int64_t RegionCode() const { return _x_mRegionCode; }
    const std::string& LongVersion() const { return _x_mLongVersion; }
    const std::string& ShortVersion() const { return _x_mShortVersion; }
    const std::string& PackageInfo() const { return _x_mPackageInfo; }
    const std::string& Copyright() const { return _x_mLongVersion; }
    const std::string& Version() const { return _x_mShortVersion; }
    const std::string& Description() const { return _x_mPackageInfo; }

    void MenuBar(platform::MenuBar* bar);  // the default menu bar; not owned
    platform::MenuBar* MenuBar() const { return menuBar_; }

    // nil on the main thread; a non-nil value means a thread other than the main one.
    Object* CurrentThread() const;

    // Application events; the base implements none.
    virtual void Event_AppearanceChanged() {}
    virtual bool IsEventImplemented(const std::string& /*event*/) const { return false; }

  private:
    std::int64_t _x_mMajorVersion = 0, _x_mMinorVersion = 0, _x_mBugVersion = 0,
                 _x_mNonReleaseVersion = 0, _x_mStageCode = 0, _x_mRegionCode = 0;
    std::string _x_mLongVersion, _x_mShortVersion, _x_mPackageInfo;
    platform::MenuBar* menuBar_ = nullptr;
};

// Makes the object the application object; the platform keeps it to the end of the run.
void _RuntimeRegisterAppObject(std::unique_ptr<Application> app);
Application* getAppObject();  // nullptr before registration
void DestroyAppObject();      // end of the run, and between tests

}  // namespace platform
