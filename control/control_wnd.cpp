#include "control/control_wnd.h"

#include <array>

#include "control/control_records.h"
#include "platform/core/delegate.h"
#include "platform/core/record.h"
#include "platform/qt/buttons.h"
#include "platform/qt/canvas.h"
#include "platform/qt/frames.h"
#include "platform/qt/spoken.h"
#include "platform/qt/text_controls.h"
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

// One control of the window, in creation order: how it is made, its name, its record, and the
// handlers it gets once the record is in (before the next control exists).
struct ControlWnd::Part {
    platform::Object& (ControlWnd::*make)(const std::string& name);
    const char* name;
    std::string_view record;
    void (*wire)(ControlWnd& window);
};

template <class C>
platform::Object& ControlWnd::Make(const std::string& name) {
    return Create<C>(name);
}

// The picture goes in before the record.
platform::Object& ControlWnd::MakeTitle(const std::string& name) {
    Create<Canvas>(name).Backdrop(tlarge());
    return Named<Canvas>(name);
}

void ControlWnd::CreateControls() {
    using W = ControlWnd;
    namespace r = records;
    // clang-format off
    static constexpr std::array<Part, 33> kParts{{
        {&W::Make<Label>, "n2text", r::n2text.view(), nullptr},
        {&W::Make<TextField>, "rfld", r::rfld.view(), nullptr},
        {&W::Make<GroupBox>, "GroupBox2", r::GroupBox2.view(), nullptr},
        {&W::Make<TextField>, "m2fld", r::m2fld.view(), [](W& w) {
            w.m2fld().KeyDown = Delegate(w, &W::m2fld_KeyDown); }},
        {&W::Make<TextField>, "sd2fld", r::sd2fld.view(), [](W& w) {
            w.sd2fld().KeyDown = Delegate(w, &W::sd2fld_KeyDown); }},
        {&W::Make<TextField>, "n2fld", r::n2fld.view(), nullptr},
        {&W::Make<Label>, "StaticText3", r::StaticText3.view(), nullptr},
        {&W::Make<Label>, "StaticText4", r::StaticText4.view(), nullptr},
        {&W::Make<Separator>, "Sep2", r::Sep2.view(), nullptr},
        {&W::Make<Label>, "rtext", r::rtext.view(), nullptr},
        {&W::Make<GroupBox>, "GroupBox1", r::GroupBox1.view(), nullptr},
        {&W::Make<TextField>, "m1fld", r::m1fld.view(), [](W& w) {
            w.m1fld().KeyDown = Delegate(w, &W::m1fld_KeyDown); }},
        {&W::Make<TextField>, "sd1fld", r::sd1fld.view(), [](W& w) {
            w.sd1fld().KeyDown = Delegate(w, &W::sd1fld_KeyDown); }},
        {&W::Make<TextField>, "n1fld", r::n1fld.view(), nullptr},
        {&W::Make<Label>, "StaticText1", r::StaticText1.view(), nullptr},
        {&W::Make<Label>, "StaticText2", r::StaticText2.view(), nullptr},
        {&W::Make<Label>, "StaticText7", r::StaticText7.view(), nullptr},
        {&W::Make<Separator>, "Sep1", r::Sep1.view(), nullptr},
        {&W::MakeTitle, "HalbrineTitle", r::HalbrineTitle.view(), [](W& w) {
            w.HalbrineTitle().MouseExit = Delegate(w, &W::HalbrineTitle_MouseExit);
            w.HalbrineTitle().MouseEnter = Delegate(w, &W::HalbrineTitle_MouseEnter); }},
        {&W::Make<PushButton>, "CalcBtn", r::CalcBtn.view(), [](W& w) {
            w.CalcBtn().Action = Delegate(w, &W::CalcBtn_Action); }},
        {&W::Make<PushButton>, "ClearBtn", r::ClearBtn.view(), [](W& w) {
            w.ClearBtn().Action = Delegate(w, &W::ClearBtn_Action); }},
        {&W::Make<Label>, "copyright", r::copyright.view(), nullptr},
        {&W::Make<TextField>, "tfld", r::tfld.view(), nullptr},
        {&W::Make<TextField>, "pfld", r::pfld.view(), nullptr},
        {&W::Make<Label>, "dtail", r::dtail.view(), nullptr},
        {&W::Make<RadioButton>, "IBtn", r::IBtn.view(), [](W& w) {
            w.IBtn().Action = Delegate(w, &W::IBtn_Action); }},
        {&W::Make<RadioButton>, "RBtn", r::RBtn.view(), [](W& w) {
            w.RBtn().Action = Delegate(w, &W::RBtn_Action); }},
        {&W::Make<GroupBox>, "typeBox", r::typeBox.view(), [](W& w) {
            w.typeBox().MouseDown = Delegate(w, &W::typeBox_MouseDown); }},
        {&W::Make<Label>, "ttext", r::ttext.view(), nullptr},
        {&W::Make<TextField>, "dfFld", r::dfFld.view(), nullptr},
        {&W::Make<Label>, "dfText", r::dfText.view(), nullptr},
        {&W::Make<Label>, "StaticText5", r::StaticText5.view(), nullptr},
        {&W::Make<PushButton>, "PushButton1", r::PushButton1.view(), [](W& w) {
            w.PushButton1().MouseDown = Delegate(w, &W::PushButton1_MouseDown); }},
    }};
    // clang-format on
    for (const Part& part : kParts) {
        platform::ApplyRecord((this->*part.make)(part.name), part.record);
        if (part.wire != nullptr) {
            part.wire(*this);
        }
    }
    NameControlsForScreenReaders();
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
    // Tab does not reach the results, and they appear where the user is not: a screen reader
    // says them as the form shows them, with the captions under them, once a calculation has
    // written them. The form leaves the letter p to the reader.
    using std::string;
    platform::SpeakWhenWritten(*this,
                               {{string(layout::dfText.text), string(layout::dfFld.name), ""},
                                {string(layout::ttext.text), string(layout::tfld.name), ""},
                                {"p", string(layout::pfld.name), string(layout::dtail.text)}});
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
