#include "platform/qt/menu_keys.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QShortcut>

#include "platform/qt/app_wide.h"

namespace platform::qt {

QString AccessKeys::Title(const QString& caption) {
    QString title;
    bool keyed = false;
    for (const QChar c : caption) {
        if (!keyed && c.isLetterOrNumber() && !taken_.contains(c.toLower())) {
            taken_ += c.toLower();
            title += QLatin1Char('&');
            keyed = true;
        }
        title += c;
        if (c == QLatin1Char('&')) {
            title += c;
        }
    }
    return title;
}

namespace {

// The first shown menu of the bar opens with its first item that can be chosen highlighted, as
// its access key opens it.
void OpenFirstMenu(QMenuBar& bar) {
    for (QAction* title : bar.actions()) {
        if (title->menu() != nullptr && title->isVisible() && title->isEnabled()) {
            bar.setActiveAction(title);
            for (QAction* item : title->menu()->actions()) {
                if (item->isVisible() && item->isEnabled() && !item->isSeparator()) {
                    title->menu()->setActiveAction(item);
                    break;
                }
            }
            return;
        }
    }
}

bool IsMenuWidget(const QWidget* widget) {
    return qobject_cast<const QMenu*>(widget) != nullptr ||
           qobject_cast<const QMenuBar*>(widget) != nullptr;
}

// The widget that had the keyboard last, the menus aside. Walking the menus by key gives the
// keyboard to the bar or to an open menu, and Qt hands it back to that widget when they close;
// Qt keeps to itself whom it took it from.
class KeyboardOutsideMenus : public QObject {
  public:
    QWidget* Holder() const { return holder_; }

  private:
    friend KeyboardOutsideMenus& ForThisApplication<KeyboardOutsideMenus>();
    explicit KeyboardOutsideMenus(QObject* app) : QObject(app) {
        Note(QApplication::focusWidget());
        connect(qApp, &QApplication::focusChanged, this,
                [this](QWidget*, QWidget* to) { Note(to); });
    }
    void Note(QWidget* focus) {
        if (focus != nullptr && !IsMenuWidget(focus)) {
            holder_ = focus;
        }
    }
    QPointer<QWidget> holder_;
};

}  // namespace

// The F10 shortcut, like the bar's own access keys, works while the bar is shown in the active
// window.
void TakeMenuKeys(QMenuBar& bar) {
    auto* f10 = new QShortcut(QKeySequence(Qt::Key_F10), &bar);
    QObject::connect(f10, &QShortcut::activated, &bar, [&bar] { OpenFirstMenu(bar); });
    ForThisApplication<KeyboardOutsideMenus>();  // watching from now on
}

QWidget* EditedWidget() {
    QWidget* focus = QApplication::focusWidget();
    return IsMenuWidget(focus) ? ForThisApplication<KeyboardOutsideMenus>().Holder() : focus;
}

}  // namespace platform::qt
