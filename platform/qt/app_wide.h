// Objects of which the application has one: made for the QApplication that runs now, the first
// time one is asked for, as its child, so it goes with it and a later run (a test makes a new
// application) gets a new one. Private to platform/qt.
#pragma once

#include <QCoreApplication>
#include <QPointer>

namespace platform::qt {

// The application's one T, made as `new T(app)`; T befriends this function to keep it the only
// way to make one.
template <class T>
T& ForThisApplication() {
    static QPointer<T> one;
    if (one.isNull()) {
        one = new T(QCoreApplication::instance());
    }
    return *one;
}

// An application-wide watcher: every event of the application is shown to See before it reaches
// its receiver, which still gets it.
class ApplicationFilter : public QObject {
  protected:
    explicit ApplicationFilter(QObject* app) : QObject(app) { app->installEventFilter(this); }
    virtual void See(QObject* watched, QEvent* event) = 0;

  private:
    bool eventFilter(QObject* watched, QEvent* event) final {
        See(watched, event);
        return false;
    }
};

}  // namespace platform::qt
