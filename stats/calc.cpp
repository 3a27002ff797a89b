#include <array>

#include "platform/core/text.h"
#include "stats/messages.h"
#include "stats/stats.h"

namespace korvane {

namespace {

struct Check {
    const char* field;
    const char* message;
};

// The first five blank checks are the same for both tests; the sixth field differs.
constexpr std::array<Check, 6> kIndependentBlanks{{
    {"m1fld", messages::kMean1},
    {"m2fld", messages::kMean2},
    {"sd1fld", messages::kSd1},
    {"sd2fld", messages::kSd2},
    {"n1fld", messages::kN1},
    {"n2fld", messages::kN2},
}};
constexpr std::array<Check, 6> kRelatedBlanks{{
    kIndependentBlanks[0],
    kIndependentBlanks[1],
    kIndependentBlanks[2],
    kIndependentBlanks[3],
    kIndependentBlanks[4],
    {"rfld", messages::kCorrelationBlank},
}};

// A failed check: the message, then the focus to the field concerned.
void Refuse(CalcPanel& panel, const char* field, const char* message) {
    panel.MsgBox(message);
    panel.SetFocus(field);
}

// Runs the blank checks in order; false once one has refused. Nothing is trimmed: a field
// holding a blank is not empty.
bool PassesBlankChecks(CalcPanel& panel, const std::array<Check, 6>& checks) {
    for (const Check& check : checks) {
        if (panel.Text(check.field).empty()) {
            Refuse(panel, check.field, check.message);
            return false;
        }
    }
    return true;
}

double Number(CalcPanel& panel, const char* field) {
    return platform::Val(panel.Text(field));
}

bool IsValidN(std::int64_t n) {
    return n >= 2 && n <= 9999;
}

struct Means {
    double m1, m2, sd1, sd2;
};

Means ReadMeans(CalcPanel& panel) {
    const double m1 = Number(panel, "m1fld");
    const double m2 = Number(panel, "m2fld");
    const double sd1 = Number(panel, "sd1fld");
    const double sd2 = Number(panel, "sd2fld");
    return {m1, m2, sd1, sd2};
}

bool Independent(CalcPanel& panel, TStatistic& result) {
    if (!PassesBlankChecks(panel, kIndependentBlanks)) {
        return false;
    }
    const Means means = ReadMeans(panel);
    const std::int64_t n1 = ToN(Number(panel, "n1fld"));
    const std::int64_t n2 = ToN(Number(panel, "n2fld"));
    if (!IsValidN(n1)) {
        Refuse(panel, "n1fld", messages::kIndependentN);
        return false;
    }
    if (!IsValidN(n2)) {
        Refuse(panel, "n2fld", messages::kIndependentN);
        return false;
    }
    result = IndependentT(means.m1, means.m2, means.sd1, means.sd2, n1, n2);
    return true;
}

bool Related(CalcPanel& panel, TStatistic& result) {
    if (!PassesBlankChecks(panel, kRelatedBlanks)) {
        return false;
    }
    const Means means = ReadMeans(panel);
    const std::int64_t n1 = ToN(Number(panel, "n1fld"));
    const double r = Number(panel, "rfld");
    if (!IsValidN(n1)) {
        Refuse(panel, "n1fld", messages::kPairedN);
        return false;
    }
    if (platform::Abs(r) > 1.0) {
        Refuse(panel, "rfld", messages::kCorrelation);
        return false;
    }
    result = RelatedT(means.m1, means.m2, means.sd1, means.sd2, r, n1);
    return true;
}

// Shows p, t and df with their labels, in this order, and writes nothing else. `t` is the
// signed value; p below .0001 shows as .0001, which stands for every smaller value.
void ShowResult(CalcPanel& panel, double t, std::int64_t df, double p) {
    panel.Enabled("pfld", true);
    panel.Visible("pfld", true);
    if (0.0001 > p) {  // false for NaN, which is shown as it is
        p = 0.0001;
    }
    panel.Text("pfld", platform::Format(p, ".0000"));
    panel.Visible("dtail", true);  // the label stays disabled
    panel.Enabled("tfld", true);
    panel.Visible("tfld", true);
    panel.Text("tfld", platform::Format(t, "+####.000"));
    panel.Enabled("ttext", true);
    panel.Visible("ttext", true);
    panel.Enabled("dfFld", true);
    panel.Visible("dfFld", true);
    panel.Text("dfFld", platform::Str(df));
    panel.Enabled("dfText", true);
    panel.Visible("dfText", true);
}

}  // namespace

void CalcBtn_Action(CalcPanel& panel) {
    TStatistic result{};
    if (Globals::btn == 1) {
        if (!Independent(panel, result)) {
            return;
        }
    } else if (Globals::btn == 2) {
        if (!Related(panel, result)) {
            return;
        }
    } else {
        panel.MsgBox(messages::kChooseTest);  // the focus stays where it is
        return;
    }
    Globals::t = result.t;
    Globals::k1 = result.df;
    ProbModule::tprob();  // leaves |t| in Globals::t; the signed t is shown
    ShowResult(panel, result.t, result.df, Globals::p);
}

}  // namespace korvane
