#include "control/control_wnd.h"

#include <array>

#include "control/control_records.h"
#include "platform/core/delegate.h"
#include "platform/core/record.h"
#include "windows/menu.h"
#include "windows/pictures.h"

namespace korvane {

using platform::Canvas;
using platform::Delegate;
using platform::GroupBox;
using platform::Label;
using platform::PushButton;
using platform::RadioButton;
using platform::Separator;
using platform::TextField;

// The bar goes in before the record, so the window's first show already carries it.
void ControlWnd::Layout() {
    MenuBar(&Menu::Instance());
    platform::ApplyRecord(*this, records::ControlWnd.view());
}

void ControlWnd::CreateControls() {
    _CreateControls0();
    _CreateControls1();
    NameControlsForScreenReaders();
}

// Controls 1 to 30, in table order. Each gets its record before its handlers, and its handlers
// before the next control exists.
void ControlWnd::_CreateControls0() {
    using platform::ApplyRecord;
    ApplyRecord(Create<Label>("n2text"), records::n2text.view());
    ApplyRecord(Create<TextField>("rfld"), records::rfld.view());
    ApplyRecord(Create<GroupBox>("GroupBox2"), records::GroupBox2.view());
    ApplyRecord(Create<TextField>("m2fld"), records::m2fld.view());
    m2fld().KeyDown = Delegate(*this, &ControlWnd::m2fld_KeyDown);
    ApplyRecord(Create<TextField>("sd2fld"), records::sd2fld.view());
    sd2fld().KeyDown = Delegate(*this, &ControlWnd::sd2fld_KeyDown);
    ApplyRecord(Create<TextField>("n2fld"), records::n2fld.view());
    ApplyRecord(Create<Label>("StaticText3"), records::StaticText3.view());
    ApplyRecord(Create<Label>("StaticText4"), records::StaticText4.view());
    ApplyRecord(Create<Separator>("Sep2"), records::Sep2.view());
    ApplyRecord(Create<Label>("rtext"), records::rtext.view());
    ApplyRecord(Create<GroupBox>("GroupBox1"), records::GroupBox1.view());
    ApplyRecord(Create<TextField>("m1fld"), records::m1fld.view());
    m1fld().KeyDown = Delegate(*this, &ControlWnd::m1fld_KeyDown);
    ApplyRecord(Create<TextField>("sd1fld"), records::sd1fld.view());
    sd1fld().KeyDown = Delegate(*this, &ControlWnd::sd1fld_KeyDown);
    ApplyRecord(Create<TextField>("n1fld"), records::n1fld.view());
    ApplyRecord(Create<Label>("StaticText1"), records::StaticText1.view());
    ApplyRecord(Create<Label>("StaticText2"), records::StaticText2.view());
    ApplyRecord(Create<Label>("StaticText7"), records::StaticText7.view());
    ApplyRecord(Create<Separator>("Sep1"), records::Sep1.view());
    Create<Canvas>("HalbrineTitle").Backdrop(tlarge());  // the picture goes in before the record
    ApplyRecord(HalbrineTitle(), records::HalbrineTitle.view());
    HalbrineTitle().MouseExit = Delegate(*this, &ControlWnd::HalbrineTitle_MouseExit);
    HalbrineTitle().MouseEnter = Delegate(*this, &ControlWnd::HalbrineTitle_MouseEnter);
    ApplyRecord(Create<PushButton>("CalcBtn"), records::CalcBtn.view());
    CalcBtn().Action = Delegate(*this, &ControlWnd::CalcBtn_Action);
    ApplyRecord(Create<PushButton>("ClearBtn"), records::ClearBtn.view());
    ClearBtn().Action = Delegate(*this, &ControlWnd::ClearBtn_Action);
    ApplyRecord(Create<Label>("copyright"), records::copyright.view());
    ApplyRecord(Create<TextField>("tfld"), records::tfld.view());
    ApplyRecord(Create<TextField>("pfld"), records::pfld.view());
    ApplyRecord(Create<Label>("dtail"), records::dtail.view());
    ApplyRecord(Create<RadioButton>("IBtn"), records::IBtn.view());
    IBtn().Action = Delegate(*this, &ControlWnd::IBtn_Action);
    ApplyRecord(Create<RadioButton>("RBtn"), records::RBtn.view());
    RBtn().Action = Delegate(*this, &ControlWnd::RBtn_Action);
    ApplyRecord(Create<GroupBox>("typeBox"), records::typeBox.view());
    typeBox().MouseDown = Delegate(*this, &ControlWnd::typeBox_MouseDown);
    ApplyRecord(Create<Label>("ttext"), records::ttext.view());
    ApplyRecord(Create<TextField>("dfFld"), records::dfFld.view());
}

// Controls 31 to 33.
void ControlWnd::_CreateControls1() {
    using platform::ApplyRecord;
    ApplyRecord(Create<Label>("dfText"), records::dfText.view());
    ApplyRecord(Create<Label>("StaticText5"), records::StaticText5.view());
    ApplyRecord(Create<PushButton>("PushButton1"), records::PushButton1.view());
    PushButton1().MouseDown = Delegate(*this, &ControlWnd::PushButton1_MouseDown);
}

// The fields have no caption of their own, the frame of the radio buttons shows none and "?"
// says nothing of what it does: a screen reader speaks these names instead.
void ControlWnd::NameControlsForScreenReaders() {
    struct Spoken {
        const char* control;
        const char* name;
    };
    static constexpr std::array<Spoken, 12> kSpoken{{
        {"m1fld", "Mean of sample 1"},
        {"sd1fld", "Standard deviation of sample 1"},
        {"n1fld", "N of sample 1, or number of pairs"},
        {"m2fld", "Mean of sample 2"},
        {"sd2fld", "Standard deviation of sample 2"},
        {"n2fld", "N of sample 2"},
        {"rfld", "Correlation r between the samples"},
        {"tfld", "t"},
        {"dfFld", "Degrees of freedom"},
        {"pfld", "Probability, two-tailed"},
        {"typeBox", "Kind of t-test"},
        {"PushButton1", "Show the t-test information"},
    }};
    for (const Spoken& spoken : kSpoken) {
        Named<platform::RectControl>(spoken.control).AccessibleName(spoken.name);
    }
}

// clang-format off
Label& ControlWnd::n2text() { return Named<Label>("n2text"); }
TextField& ControlWnd::rfld() { return Named<TextField>("rfld"); }
GroupBox& ControlWnd::GroupBox2() { return Named<GroupBox>("GroupBox2"); }
TextField& ControlWnd::m2fld() { return Named<TextField>("m2fld"); }
TextField& ControlWnd::sd2fld() { return Named<TextField>("sd2fld"); }
TextField& ControlWnd::n2fld() { return Named<TextField>("n2fld"); }
Label& ControlWnd::StaticText3() { return Named<Label>("StaticText3"); }
Label& ControlWnd::StaticText4() { return Named<Label>("StaticText4"); }
Separator& ControlWnd::Sep2() { return Named<Separator>("Sep2"); }
Label& ControlWnd::rtext() { return Named<Label>("rtext"); }
GroupBox& ControlWnd::GroupBox1() { return Named<GroupBox>("GroupBox1"); }
TextField& ControlWnd::m1fld() { return Named<TextField>("m1fld"); }
TextField& ControlWnd::sd1fld() { return Named<TextField>("sd1fld"); }
TextField& ControlWnd::n1fld() { return Named<TextField>("n1fld"); }
Label& ControlWnd::StaticText1() { return Named<Label>("StaticText1"); }
Label& ControlWnd::StaticText2() { return Named<Label>("StaticText2"); }
Label& ControlWnd::StaticText7() { return Named<Label>("StaticText7"); }
Separator& ControlWnd::Sep1() { return Named<Separator>("Sep1"); }
Canvas& ControlWnd::HalbrineTitle() { return Named<Canvas>("HalbrineTitle"); }
PushButton& ControlWnd::CalcBtn() { return Named<PushButton>("CalcBtn"); }
PushButton& ControlWnd::ClearBtn() { return Named<PushButton>("ClearBtn"); }
Label& ControlWnd::copyright() { return Named<Label>("copyright"); }
TextField& ControlWnd::tfld() { return Named<TextField>("tfld"); }
TextField& ControlWnd::pfld() { return Named<TextField>("pfld"); }
Label& ControlWnd::dtail() { return Named<Label>("dtail"); }
RadioButton& ControlWnd::IBtn() { return Named<RadioButton>("IBtn"); }
RadioButton& ControlWnd::RBtn() { return Named<RadioButton>("RBtn"); }
GroupBox& ControlWnd::typeBox() { return Named<GroupBox>("typeBox"); }
Label& ControlWnd::ttext() { return Named<Label>("ttext"); }
TextField& ControlWnd::dfFld() { return Named<TextField>("dfFld"); }
Label& ControlWnd::dfText() { return Named<Label>("dfText"); }
Label& ControlWnd::StaticText5() { return Named<Label>("StaticText5"); }
PushButton& ControlWnd::PushButton1() { return Named<PushButton>("PushButton1"); }
// clang-format on

// The item of that name anywhere in the window's bar, cast to its class.
template <class Item>
Item& ControlWnd::MenuItemNamed(const std::string& name) const {
    return platform::RuntimeCheckCast<Item>(platform::NotNil(MenuBar())._Lookup(name));
}

using platform::AppleMenuItem;
using platform::MenuItem;
using platform::QuitMenuItem;

// clang-format off
MenuItem& ControlWnd::UntitledMenu4() { return MenuItemNamed<MenuItem>("UntitledMenu4"); }
MenuItem& ControlWnd::WindowMenu() { return MenuItemNamed<MenuItem>("WindowMenu"); }
AppleMenuItem& ControlWnd::UntitledMenu5() { return MenuItemNamed<AppleMenuItem>("UntitledMenu5"); }
AppleMenuItem& ControlWnd::AboutHalbrine() { return MenuItemNamed<AppleMenuItem>("AboutHalbrine"); }
MenuItem& ControlWnd::UntitledMenu6() { return MenuItemNamed<MenuItem>("UntitledMenu6"); }
MenuItem& ControlWnd::AboutMenuItem() { return MenuItemNamed<MenuItem>("AboutMenuItem"); }
MenuItem& ControlWnd::ControlMenuItem() { return MenuItemNamed<MenuItem>("ControlMenuItem"); }
MenuItem& ControlWnd::UntitledMenu0() { return MenuItemNamed<MenuItem>("UntitledMenu0"); }
MenuItem& ControlWnd::UntitledMenu7() { return MenuItemNamed<MenuItem>("UntitledMenu7"); }
MenuItem& ControlWnd::EditClear() { return MenuItemNamed<MenuItem>("EditClear"); }
MenuItem& ControlWnd::EditPaste() { return MenuItemNamed<MenuItem>("EditPaste"); }
MenuItem& ControlWnd::EditCopy() { return MenuItemNamed<MenuItem>("EditCopy"); }
MenuItem& ControlWnd::EditCut() { return MenuItemNamed<MenuItem>("EditCut"); }
MenuItem& ControlWnd::UntitledMenu1() { return MenuItemNamed<MenuItem>("UntitledMenu1"); }
MenuItem& ControlWnd::EditUndo() { return MenuItemNamed<MenuItem>("EditUndo"); }
MenuItem& ControlWnd::UntitledMenu2() { return MenuItemNamed<MenuItem>("UntitledMenu2"); }
MenuItem& ControlWnd::UntitledMenu8() { return MenuItemNamed<MenuItem>("UntitledMenu8"); }
QuitMenuItem& ControlWnd::FileQuit() { return MenuItemNamed<QuitMenuItem>("FileQuit"); }
MenuItem& ControlWnd::FilePrint() { return MenuItemNamed<MenuItem>("FilePrint"); }
MenuItem& ControlWnd::UntitledMenu3() { return MenuItemNamed<MenuItem>("UntitledMenu3"); }
// clang-format on

}  // namespace korvane
