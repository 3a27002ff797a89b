#include "platform/qt/menu.h"

#include <QAction>
#include <QClipboard>
#include <QCoreApplication>
#include <QGuiApplication>
#include <QKeySequence>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTextDocument>
#include <QTextEdit>
#include <algorithm>

#include "platform/qt/menu_keys.h"
#include "platform/qt/qt_support.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace platform {

namespace {

// Every item's view, so that the end of the run can take their Qt objects down while Qt is still
// up: the menu bar itself is a static that lives to the end of the process. The list is never
// destroyed, since items of static bars leave it during the static destructors.
std::vector<MenuItem::Impl*>& Views() {
    static auto* views = new std::vector<MenuItem::Impl*>;
    return *views;
}

}  // namespace

// The tree is data; its Qt objects are made when a window first shows the bar, and made again
// if it is shown after ReleaseMenuViews. An item inside a menu is a QAction; a menu of the bar,
// or an item with items of its own, is a QMenu.
struct MenuItem::Impl {
    std::string name, caption, shortcut;
    bool visible = true, autoEnabled = true, enabled = true;
    std::unique_ptr<QAction> action;
    std::unique_ptr<QMenu> menu;
    std::vector<QPointer<QMenuBar>> bars;  // for a MenuBar: the window bars that show it

    Impl() { Views().push_back(this); }
    ~Impl() {
        std::erase(Views(), this);
        if (QCoreApplication::instance() == nullptr) {
            // Qt is gone already: its objects went with it.
            (void)action.release();
            (void)menu.release();
        }
    }
    void Release() {
        menu.reset();
        action.reset();
        bars.clear();
    }
};

namespace {

const char* const kBarProperty = "korvaneMenuBar";

// "Cmd+Q" is written for another desktop; here the command key is Ctrl. A bare key is a
// command-key shortcut as well.
QKeySequence KeySequence(const std::string& shortcut) {
    QString text = qt::ToQt(shortcut).trimmed();
    if (text.isEmpty()) {
        return {};
    }
    text.replace(QLatin1String("Command+"), QLatin1String("Ctrl+"), Qt::CaseInsensitive);
    text.replace(QLatin1String("Cmd+"), QLatin1String("Ctrl+"), Qt::CaseInsensitive);
    text.replace(QLatin1String("Option+"), QLatin1String("Alt+"), Qt::CaseInsensitive);
    if (!text.contains(QLatin1Char('+'))) {
        text.prepend(QLatin1String("Ctrl+"));
    }
    return QKeySequence(text, QKeySequence::PortableText);
}

bool IsMenu(const MenuItem& item) {
    return dynamic_cast<const MenuBar*>(item.Parent()) != nullptr || item.Count() > 0;
}

enum class EditCommand { None, Undo, Cut, Copy, Paste };

// The standard editing command an item stands for, known by its shortcut.
EditCommand EditCommandOf(const MenuItem& item) {
    const QKeySequence keys = KeySequence(item.Shortcut());
    if (keys.isEmpty()) {
        return EditCommand::None;
    }
    if (keys == QKeySequence(QKeySequence::Undo)) {
        return EditCommand::Undo;
    }
    if (keys == QKeySequence(QKeySequence::Cut)) {
        return EditCommand::Cut;
    }
    if (keys == QKeySequence(QKeySequence::Copy)) {
        return EditCommand::Copy;
    }
    if (keys == QKeySequence(QKeySequence::Paste)) {
        return EditCommand::Paste;
    }
    return EditCommand::None;
}

bool ClipboardHasText() {
    const QClipboard* clipboard = QGuiApplication::clipboard();
    return clipboard != nullptr && !qt::PastableText(clipboard->mimeData()).isEmpty();
}

// Whether the focused text field can do the command now. A read-only field can only copy, and
// a password field gives nothing away.
bool CanEdit(EditCommand command) {
    QWidget* focus = qt::EditedWidget();
    if (auto* line = qobject_cast<QLineEdit*>(focus)) {
        const bool writable = !line->isReadOnly();
        const bool showsText = line->echoMode() == QLineEdit::Normal;
        switch (command) {
            case EditCommand::Undo:
                return writable && line->isUndoAvailable();
            case EditCommand::Cut:
                return writable && showsText && line->hasSelectedText();
            case EditCommand::Copy:
                return showsText && line->hasSelectedText();
            case EditCommand::Paste:
                return writable && ClipboardHasText();
            case EditCommand::None:
                return false;
        }
    }
    if (auto* area = qobject_cast<QTextEdit*>(focus)) {
        const bool writable = !area->isReadOnly();
        switch (command) {
            case EditCommand::Undo:
                return writable && area->document()->isUndoAvailable();
            case EditCommand::Cut:
                return writable && area->textCursor().hasSelection();
            case EditCommand::Copy:
                return area->textCursor().hasSelection();
            case EditCommand::Paste:
                return writable && area->canPaste();
            case EditCommand::None:
                return false;
        }
    }
    return false;
}

// The command on a line or an area: both answer it by the same names.
template <class Editor>
void Edit(Editor& editor, EditCommand command) {
    switch (command) {
        case EditCommand::Undo:
            return editor.undo();
        case EditCommand::Cut:
            return editor.cut();
        case EditCommand::Copy:
            return editor.copy();
        case EditCommand::Paste:
            return editor.paste();
        case EditCommand::None:
            return;
    }
}

// An Edit command that no handler took does its work on the focused text field, where the field
// can do it: never a change to a read-only one.
void EditFocusedText(EditCommand command) {
    if (!CanEdit(command)) {
        return;
    }
    QWidget* focus = qt::EditedWidget();
    if (auto* line = qobject_cast<QLineEdit*>(focus)) {
        Edit(*line, command);
    } else {
        Edit(*qobject_cast<QTextEdit*>(focus), command);
    }
}

// Choosing an item: the active window's handler for its name; then the item's own action; then,
// for Undo, Cut, Copy and Paste, the focused text field. A handler that returns false passes the
// choice on.
void Choose(MenuItem& item) {
    Window* window = qt::ActiveWindow();
    if (window != nullptr && window->RunMenuHandler(item.Name())) {
        return;
    }
    if (item.Event_Action()) {
        return;
    }
    EditFocusedText(EditCommandOf(item));
}

// An item is offered when choosing it would do something now: the active window has a handler
// for it, it acts by itself (Quit), or the focused field can do its editing command. Print, and
// every item that nothing serves, is shown disabled.
bool Served(const MenuItem& item) {
    if (item.Count() > 0 || dynamic_cast<const MenuBar*>(item.Parent()) != nullptr) {
        return true;  // a menu opens
    }
    const Window* window = qt::ActiveWindow();
    if (window != nullptr && window->HasMenuHandler(item.Name())) {
        return true;
    }
    return item.ActsByItself() || CanEdit(EditCommandOf(item));
}

void Refresh(MenuItem& item);

// Before a menu opens, the active window updates its items, and each shows whether it is served.
void UpdateBeforeShowing(MenuItem& menu) {
    if (Window* window = qt::ActiveWindow()) {
        ProtectedCall([window] { window->Event_EnableMenuItems(); });
    }
    for (std::size_t i = 0; i < menu.Count(); ++i) {
        Refresh(*menu.Item(i));
    }
}

// The action that shows the item in its menu or bar, made on first use.
QAction* Realize(MenuItem& item) {
    MenuItem::Impl& view = item.View();
    if (IsMenu(item)) {
        if (!view.menu) {
            view.menu = std::make_unique<QMenu>();
            view.menu->setPalette(qt::LightPalette());
            MenuItem* menu = &item;
            QObject::connect(view.menu.get(), &QMenu::aboutToShow, view.menu.get(),
                             [menu] { UpdateBeforeShowing(*menu); });
            for (std::size_t i = 0; i < item.Count(); ++i) {
                view.menu->addAction(Realize(*item.Item(i)));
            }
        }
        Refresh(item);
        return view.menu->menuAction();
    }
    if (!view.action) {
        view.action = std::make_unique<QAction>();
        MenuItem* chosen = &item;
        QObject::connect(view.action.get(), &QAction::triggered, view.action.get(),
                         [chosen] { ProtectedCall([chosen] { Choose(*chosen); }); });
    }
    Refresh(item);
    return view.action.get();
}

// An item without a caption offers nothing to choose, so it stays in the tree but is not shown.
// An AppleMenuItem belongs in the application menu of a desktop that has one; Linux desktops have
// none, and the items the system marks so repeat items of their menu ("About Korvane"), so they
// are not shown either.
bool IsShown(const MenuItem& item) {
    return item.Visible() && !item.Value().empty() &&
           dynamic_cast<const AppleMenuItem*>(&item) == nullptr;
}

// The caption with the access key that the shown items before it in its menu left it.
QString Title(const MenuItem& item) {
    qt::AccessKeys keys;
    if (const MenuItem* menu = item.Parent()) {
        for (std::size_t i = 0; menu->Item(i) != &item; ++i) {
            if (IsShown(*menu->Item(i))) {
                keys.Title(qt::ToQt(menu->Item(i)->Value()));
            }
        }
    }
    return keys.Title(qt::ToQt(item.Value()));
}

// Shows the item's current state in its Qt action.
void Refresh(MenuItem& item) {
    MenuItem::Impl& view = item.View();
    QAction* action = view.menu ? view.menu->menuAction() : view.action.get();
    if (action == nullptr) {
        return;
    }
    const bool separator = view.caption == "-";
    if (view.menu) {
        view.menu->setTitle(Title(item));
        view.menu->setWindowTitle(qt::ToQt(view.caption));  // the open menu's name, for readers
    } else {
        action->setSeparator(separator);
        action->setText(separator ? QString() : Title(item));
        action->setShortcut(KeySequence(view.shortcut));
    }
    action->setEnabled(view.enabled && (separator || Served(item)));
    action->setVisible(IsShown(item));
}

// The item became a menu (it got its first item) after it was shown as a plain action.
void BecomeMenu(MenuItem& item) {
    std::unique_ptr<QAction> old = std::move(item.View().action);
    QAction* now = Realize(item);
    for (QObject* holder : old->associatedObjects()) {
        if (auto* widget = qobject_cast<QWidget*>(holder)) {
            widget->insertAction(old.get(), now);
            widget->removeAction(old.get());
        }
    }
}

}  // namespace

namespace qt {

void ShowMenuBar(QMenuBar& qbar, MenuBar& bar) {
    qbar.clear();
    qbar.setProperty(kBarProperty, QVariant::fromValue(static_cast<void*>(&bar)));
    for (std::size_t i = 0; i < bar.Count(); ++i) {
        qbar.addAction(Realize(*bar.Item(i)));
    }
    auto& bars = bar.View().bars;
    std::erase_if(bars, [](const QPointer<QMenuBar>& shown) { return shown.isNull(); });
    if (std::find(bars.begin(), bars.end(), &qbar) == bars.end()) {
        bars.emplace_back(&qbar);
    }
}

void ReleaseMenuViews() {
    for (MenuItem::Impl* view : Views()) {
        view->Release();
    }
}

void AddShortcuts(QWidget& widget, MenuItem& menu) {
    for (std::size_t i = 0; i < menu.Count(); ++i) {
        MenuItem& item = *menu.Item(i);
        if (item.Count() > 0) {
            AddShortcuts(widget, item);
        } else if (!item.Shortcut().empty() && dynamic_cast<MenuBar*>(item.Parent()) == nullptr &&
                   EditCommandOf(item) == EditCommand::None) {
            widget.addAction(Realize(item));
        }
    }
}

}  // namespace qt

MenuItem::MenuItem() : impl_(std::make_unique<Impl>()) {}

MenuItem::~MenuItem() = default;

const ClassInfo& MenuItem::StaticClass() {
    static const ClassInfo info{"MenuItem", &Object::StaticClass(), {}};
    return info;
}

namespace {

// A change the system's code makes to an item; the bar shows it at once.
template <class T>
void Change(MenuItem& item, T& field, const T& value) {
    _UITrap();
    field = value;
    Refresh(item);
}

}  // namespace

void MenuItem::Name(const std::string& v) {
    _UITrap();
    impl_->name = v;
}

const std::string& MenuItem::Name() const {
    return impl_->name;
}

void MenuItem::Value(const std::string& v) {
    Change(*this, impl_->caption, v);
}

const std::string& MenuItem::Value() const {
    return impl_->caption;
}

void MenuItem::Shortcut(const std::string& v) {
    Change(*this, impl_->shortcut, v);
}

const std::string& MenuItem::Shortcut() const {
    return impl_->shortcut;
}

void MenuItem::Visible(bool v) {
    Change(*this, impl_->visible, v);
}

bool MenuItem::Visible() const {
    return impl_->visible;
}

// Items are enabled by Event_EnableMenuItems on this platform; the flag is kept.
void MenuItem::AutoEnabled(bool v) {
    _UITrap();
    impl_->autoEnabled = v;
}

bool MenuItem::AutoEnabled() const {
    return impl_->autoEnabled;
}

void MenuItem::Enabled(bool v) {
    Change(*this, impl_->enabled, v);
}

bool MenuItem::Enabled() const {
    return impl_->enabled;
}

void MenuItem::AddMenu(std::unique_ptr<MenuItem> item) {
    _UITrap();
    MenuItem& added = NotNil(item.get());
    added.parent_ = this;
    children_.push_back(std::move(item));
    if (dynamic_cast<MenuBar*>(this) != nullptr) {
        for (const QPointer<QMenuBar>& qbar : impl_->bars) {
            if (!qbar.isNull() && qbar->property(kBarProperty).value<void*>() == this) {
                qbar->addAction(Realize(added));
            }
        }
    } else if (impl_->menu) {
        impl_->menu->addAction(Realize(added));
    } else if (impl_->action) {
        BecomeMenu(*this);
    }
}

MenuItem* MenuItem::Child(const std::string& name) const {
    _UITrap();
    for (const auto& child : children_) {
        if (child->Name() == name) {
            return child.get();
        }
    }
    return nullptr;
}

MenuItem* MenuItem::_Lookup(const std::string& name) const {
    _UITrap();
    for (const auto& child : children_) {
        if (child->Name() == name) {
            return child.get();
        }
        if (MenuItem* below = child->_Lookup(name)) {
            return below;
        }
    }
    return nullptr;
}

std::size_t MenuItem::Count() const {
    return children_.size();
}

MenuItem* MenuItem::Item(std::size_t index) const {
    return index < children_.size() ? children_[index].get() : nullptr;
}

const ClassInfo& MenuBar::StaticClass() {
    static const ClassInfo info{"MenuBar", &MenuItem::StaticClass(), {}};
    return info;
}

const ClassInfo& AppleMenuItem::StaticClass() {
    static const ClassInfo info{"AppleMenuItem", &MenuItem::StaticClass(), {}};
    return info;
}

const ClassInfo& QuitMenuItem::StaticClass() {
    static const ClassInfo info{"QuitMenuItem", &MenuItem::StaticClass(), {}};
    return info;
}

bool QuitMenuItem::ActsByItself() const {
    return true;
}

bool QuitMenuItem::Event_Action() {
    return QuitMenuAction(*this);
}

bool QuitMenuAction(MenuItem& /*item*/) {
    Quit(0);
    return true;
}

}  // namespace platform
