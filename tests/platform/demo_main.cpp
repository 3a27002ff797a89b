// A small window built the way the program's windows are built, for a look at the platform on a
// real display: `xvfb-run platform_demo`, or `platform_demo --stay` on a desktop (close the
// window to end). Without --stay it quits by itself after a moment, so it can run unattended.
#include <cstring>
#include <iostream>

#include "platform/core/delegate.h"
#include "platform/core/record.h"
#include "platform/core/record_encoder.h"
#include "platform/qt/controls.h"
#include "platform/qt/menu.h"
#include "platform/qt/runtime.h"
#include "platform/qt/window.h"

namespace {

using namespace platform::rec;

constexpr auto kDemoRecord = PLATFORM_RECORD(
    Int("Width", 360), Int("Height", 220), Int("Type", 0), Str("Title", "Platform demo"),
    Bool("HasCloseButton", true), Bool("HasMaximizeButton", false), Bool("HasMinimizeButton", true),
    Bool("Resizeable", false), Bool("Visible", true), Bool("HasBackgroundColor", true),
    Color("BackgroundColor", 0xFFFFFF), Bool("MenuBarVisible", true));
constexpr auto kChoiceRecord =
    PLATFORM_RECORD(Int("Left", 20), Int("Top", 20), Int("Width", 320), Int("Height", 40),
                    Str("Caption", ""), Int("TabIndex", 9));
constexpr auto kOneRecord =
    PLATFORM_RECORD(Int("Left", 30), Int("Top", 30), Int("Width", 140), Int("Height", 20),
                    Str("Caption", "Independent"), Int("TabIndex", 2));
constexpr auto kTwoRecord =
    PLATFORM_RECORD(Int("Left", 190), Int("Top", 30), Int("Width", 140), Int("Height", 20),
                    Str("Caption", "Related"), Int("TabIndex", 3));
constexpr auto kSampleRecord =
    PLATFORM_RECORD(Int("Left", 20), Int("Top", 75), Int("Width", 150), Int("Height", 80),
                    Str("Caption", "Sample 1"), Int("TabIndex", 0), Bool("Visible", false));
constexpr auto kMeanRecord = PLATFORM_RECORD(
    Str("InitialParent", "sample"), Int("Left", 45), Int("Top", 100), Int("Width", 100),
    Int("Height", 22), Int("TextAlignment", 2), Single("FontSize", 12), Int("TabIndex", 0));
constexpr auto kMeanLabelRecord = PLATFORM_RECORD(
    Str("InitialParent", "sample"), Int("Left", 45), Int("Top", 124), Int("Width", 100),
    Int("Height", 18), Str("Value", "Mean"), Color("TextColor", 0xCC0000), Single("FontSize", 12),
    Int("TextAlignment", 2), Bool("TabStop", false));
constexpr auto kGoRecord =
    PLATFORM_RECORD(Int("Left", 20), Int("Top", 175), Int("Width", 90), Int("Height", 30),
                    Str("Caption", "Calculate"), Bool("Default", true), Bool("TabStop", false));
constexpr auto kQuitAfterRecord = PLATFORM_RECORD(Int("Period", 1500), Int("RunMode", 1));

class DemoWnd : public platform::Window {
  public:
    static const platform::ClassInfo& StaticClass() {
        static const platform::ClassInfo info{"DemoWnd.DemoWnd", &Window::StaticClass(), {}};
        return info;
    }
    const platform::ClassInfo& Class() const override { return StaticClass(); }

    void Layout() override {
        bar_.AddMenu(std::make_unique<platform::MenuItem>());
        bar_.Item(0)->Value("File");
        auto quit = std::make_unique<platform::QuitMenuItem>();
        quit->Value("Quit");
        quit->Shortcut("Cmd+Q");
        bar_.Item(0)->AddMenu(std::move(quit));
        MenuBar(&bar_);
        platform::ApplyRecord(*this, kDemoRecord.view());
    }
    void CreateControls() override {
        Make<platform::RadioButton>("one", kOneRecord).Action =
            platform::Delegate(*this, &DemoWnd::one_Action);
        Make<platform::RadioButton>("two", kTwoRecord).Action =
            platform::Delegate(*this, &DemoWnd::two_Action);
        Make<platform::GroupBox>("choice", kChoiceRecord);
        Make<platform::GroupBox>("sample", kSampleRecord);
        Make<platform::TextField>("mean", kMeanRecord).KeyDown =
            platform::Delegate(*this, &DemoWnd::mean_KeyDown);
        Make<platform::Label>("meanLabel", kMeanLabelRecord);
        Make<platform::PushButton>("go", kGoRecord).Action =
            platform::Delegate(*this, &DemoWnd::go_Action);
    }
    void Event_Close() override { platform::Quit(0); }

    void StartQuitTimer() {
        Make<platform::Timer>("quitAfter", kQuitAfterRecord).Action =
            platform::Delegate(*this, &DemoWnd::quitAfter_Action);
    }

  private:
    template <class C, class R>
    C& Make(const std::string& name, const R& record) {
        _AddControl(name, __New<C>());
        C& control = platform::RuntimeCheckCast<C>(_ControlByName(name));
        platform::ApplyRecord(control, record.view());
        return control;
    }
    platform::RectControl& Control(const std::string& name) {
        return platform::RuntimeCheckCast<platform::RectControl>(_ControlByName(name));
    }

    void one_Action(platform::RadioButton&) { ShowSample(); }
    void two_Action(platform::RadioButton&) { ShowSample(); }
    void ShowSample() {
        Control("sample").Visible(true);
        Control("mean").SetFocus();
    }
    // Digits, minus, point and slash pass; every other key beeps.
    bool mean_KeyDown(platform::TextField&, const std::string& key) {
        const unsigned char c = key.empty() ? 0 : static_cast<unsigned char>(key[0]);
        if ((c > 44 && c < 58) || c == 8 || c == 9) {
            return false;
        }
        platform::Beep();
        return true;
    }
    void go_Action(platform::PushButton&) {
        auto& mean = platform::RuntimeCheckCast<platform::TextField>(_ControlByName("mean"));
        platform::MsgBox(mean.Text().empty() ? "Please enter the mean of sample 1"
                                             : "Mean of sample 1: " + mean.Text());
    }
    void quitAfter_Action(platform::Timer&) { platform::Quit(0); }

    platform::MenuBar bar_;
};

}  // namespace

int main(int argc, char** argv) {
    const bool stay = argc > 1 && std::strcmp(argv[1], "--stay") == 0;
    platform::RuntimeInit();
    int status = 1;
    {
        DemoWnd demo;
        demo.Constructor();
        if (!stay) {
            demo.StartQuitTimer();
        }
        platform::_RuntimeRun();
        status = platform::RuntimeExit();
        std::cout << "platform_demo: the run ended with status " << status << std::endl;
    }
    return status;
}
