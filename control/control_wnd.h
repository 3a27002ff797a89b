// The control window: the form on which the user chooses the test, types the statistics,
// presses Calculate and reads t, df and p. Its controls are the rows of control_table.h, made
// from layout records (control_records.h), reached by name at each use through the accessors
// below, and wired to the handlers in table order (control_wnd.cpp). The handlers live in
// control_handlers.cpp; the Calculate command itself is the statistics engine's, reached through
// a WindowPanel over this window.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "control/control_table.h"
#include "platform/qt/menu.h"
#include "platform/qt/window.h"

namespace platform {
class Label;
class TextField;
class GroupBox;
class Separator;
class Canvas;
class PushButton;
class RadioButton;
}  // namespace platform

namespace korvane {

class ControlWnd : public platform::WindowClass<ControlWnd> {
  public:
    static constexpr const char* kClassName = "ControlWnd.ControlWnd";

    void Layout() override;
    void CreateControls() override;

    // One accessor per control of the table, named as the control and typed as its class.
#define KORVANE_ACCESSOR(name, Class, ...) platform::Class& name();
    KORVANE_CONTROLS(KORVANE_ACCESSOR)
#undef KORVANE_ACCESSOR
    // The names of the controls, in creation order.
#define KORVANE_NAME(name, ...) #name,
    static constexpr std::string_view kControlNames[] = {KORVANE_CONTROLS(KORVANE_NAME)};
#undef KORVANE_NAME

    // Control events.
    bool m2fld_KeyDown(platform::TextField& field, const std::string& key);
    bool sd2fld_KeyDown(platform::TextField& field, const std::string& key);
    bool m1fld_KeyDown(platform::TextField& field, const std::string& key);
    bool sd1fld_KeyDown(platform::TextField& field, const std::string& key);
    void HalbrineTitle_MouseExit(platform::Canvas& canvas);
    void HalbrineTitle_MouseEnter(platform::Canvas& canvas);
    void CalcBtn_Action(platform::PushButton& button);
    void ClearBtn_Action(platform::PushButton& button);
    void IBtn_Action(platform::RadioButton& button);
    void RBtn_Action(platform::RadioButton& button);
    bool typeBox_MouseDown(platform::GroupBox& box, std::int64_t x, std::int64_t y);
    bool PushButton1_MouseDown(platform::PushButton& button, std::int64_t x, std::int64_t y);

    // The items of the window's menu bar, found by name at each use.
    platform::MenuItem& UntitledMenu4();
    platform::MenuItem& WindowMenu();
    platform::AppleMenuItem& UntitledMenu5();
    platform::AppleMenuItem& AboutHalbrine();
    platform::MenuItem& UntitledMenu6();
    platform::MenuItem& AboutMenuItem();
    platform::MenuItem& ControlMenuItem();
    platform::MenuItem& UntitledMenu0();
    platform::MenuItem& UntitledMenu7();
    platform::MenuItem& EditClear();
    platform::MenuItem& EditPaste();
    platform::MenuItem& EditCopy();
    platform::MenuItem& EditCut();
    platform::MenuItem& UntitledMenu1();
    platform::MenuItem& EditUndo();
    platform::MenuItem& UntitledMenu2();
    platform::MenuItem& UntitledMenu8();
    platform::QuitMenuItem& FileQuit();
    platform::MenuItem& FilePrint();
    platform::MenuItem& UntitledMenu3();

    // Window events.
    void AddMenuHandlers() override;
    void Event_Close() override;
    void Event_Activate() override;
    void Event_EnableMenuItems() override;
    // The events overridden here, for IsEventImplemented.
    static constexpr platform::EventNames<6> kImplementedEvents{
        "Layout", "CreateControls", "AddMenuHandlers", "Close", "Activate", "EnableMenuItems"};
    bool _AboutMenuItem_Action();
    bool _AboutHalbrine_Action();

  private:
    struct Part;
    template <class C>
    platform::Object& Make(const std::string& name);
    template <class Item>
    Item& MenuItemNamed(const std::string& name) const;
    void ShowCommonEntryControls();
    void NameControlsForScreenReaders();
};

}  // namespace korvane
