// A CalcPanel over plain maps, for driving the Calculate command without a window.
//
// Fields hold texts (a field never set reads as empty), and every call is logged in order, one
// line each, in the recorder's form:
//   "m1fld.Text?" (a read)  "pfld.Text=.0873"  "pfld.Enabled=1"  "pfld.Visible=1"
//   "m1fld.SetFocus"  "MsgBox:Please enter ..."
// Header-only and free of any test framework, so fuzz targets and benchmarks can use it too.
#pragma once

#include <algorithm>
#include <iterator>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "stats/stats.h"

namespace korvane::testing {

class MapPanel : public CalcPanel {
  public:
    MapPanel() = default;
    explicit MapPanel(std::map<std::string, std::string> texts) : texts(std::move(texts)) {}

    std::string Text(const std::string& field) override {
        calls.push_back(field + ".Text?");
        const auto found = texts.find(field);
        return found == texts.end() ? std::string() : found->second;
    }
    void Text(const std::string& field, const std::string& text) override {
        calls.push_back(field + ".Text=" + text);
        texts[field] = text;
    }
    void Enabled(const std::string& control, bool value) override {
        calls.push_back(control + ".Enabled=" + (value ? "1" : "0"));
    }
    void Visible(const std::string& control, bool value) override {
        calls.push_back(control + ".Visible=" + (value ? "1" : "0"));
    }
    void SetFocus(const std::string& field) override { calls.push_back(field + ".SetFocus"); }
    void MsgBox(const std::string& text) override {
        calls.push_back("MsgBox:" + text);
        messages.push_back(text);
    }

    // The log without the reads: what the command did to the window.
    std::vector<std::string> Writes() const {
        std::vector<std::string> writes;
        std::ranges::copy_if(calls, std::back_inserter(writes),
                             [](const std::string& call) { return !call.ends_with(".Text?"); });
        return writes;
    }
    // True when the command read `field` at all.
    bool WasRead(const std::string& field) const {
        return std::ranges::find(calls, field + ".Text?") != calls.end();
    }

    std::map<std::string, std::string> texts;
    std::vector<std::string> messages;
    std::vector<std::string> calls;
};

}  // namespace korvane::testing
