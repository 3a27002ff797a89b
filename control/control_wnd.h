// The control window: the form on which the user chooses the test, types the statistics,
// presses Calculate and reads t, df and p. Its 33 controls come from layout records
// (control_records.h), are reached by name at each use through the accessors below, and are
// wired to the handlers in table order (control_wnd.cpp). The handlers live in
// control_handlers.cpp; the Calculate command itself is the statistics engine's, reached through
// a WindowPanel over this window.
#pragma once

#include <cstdint>
#include <string>

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

    // The controls, in creation order.
    platform::Label& n2text();
    platform::TextField& rfld();
    platform::GroupBox& GroupBox2();
    platform::TextField& m2fld();
    platform::TextField& sd2fld();
    platform::TextField& n2fld();
    platform::Label& StaticText3();
    platform::Label& StaticText4();
    platform::Separator& Sep2();
    platform::Label& rtext();
    platform::GroupBox& GroupBox1();
    platform::TextField& m1fld();
    platform::TextField& sd1fld();
    platform::TextField& n1fld();
    platform::Label& StaticText1();
    platform::Label& StaticText2();
    platform::Label& StaticText7();
    platform::Separator& Sep1();
    platform::Canvas& HalbrineTitle();
    platform::PushButton& CalcBtn();
    platform::PushButton& ClearBtn();
    platform::Label& copyright();
    platform::TextField& tfld();
    platform::TextField& pfld();
    platform::Label& dtail();
    platform::RadioButton& IBtn();
    platform::RadioButton& RBtn();
    platform::GroupBox& typeBox();
    platform::Label& ttext();
    platform::TextField& dfFld();
    platform::Label& dfText();
    platform::Label& StaticText5();
    platform::PushButton& PushButton1();

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
    platform::Object& MakeTitle(const std::string& name);
    template <class Item>
    Item& MenuItemNamed(const std::string& name) const;
    void ShowCommonEntryControls();
    void NameControlsForScreenReaders();
};

}  // namespace korvane
