// The statistics engine: from what the entry fields hold to t, df and p and the texts that
// show them.
//
// CalcBtn_Action is the Calculate command. It reads the chosen test from Globals::btn and the
// fields through CalcPanel, checks them, gets t and df from IndependentT or RelatedT, hands them
// to ProbModule::tprob through Globals, and writes the results back through CalcPanel. Nothing
// here knows of a window system; controls are named by their names in the control window.
#pragma once

#include <cstdint>
#include <limits>
#include <string>

namespace korvane {

namespace Globals {       // process-wide, all start at zero
extern std::int64_t btn;  // 0 none, 1 independent means, 2 related means
extern std::int64_t k1;   // df handed to tprob
extern double t;          // t handed to tprob (tprob leaves |t|)
extern double p;          // probability left by tprob
}  // namespace Globals

struct TStatistic {
    double t;
    std::int64_t df;
};

// Pooled-variance t of two independent samples; N1 and N2 lie in 2 to 9999.
TStatistic IndependentT(double m1, double m2, double sd1, double sd2, std::int64_t n1,
                        std::int64_t n2);
// t of paired samples from their correlation r; N1 (pairs) lies in 2 to 9999, |r| <= 1.
TStatistic RelatedT(double m1, double m2, double sd1, double sd2, double r, std::int64_t n1);

// The standard errors that the two t statistics divide by. Nothing guards them: zero gives
// an infinite or NaN t, as IEEE division does.
double IndependentSE(double sd1, double sd2, std::int64_t n1, std::int64_t n2);
double RelatedSE(double sd1, double sd2, double r, std::int64_t n1);

namespace ProbModule {
// Two-tailed probability of Student's t: reads Globals::t and Globals::k1 (df 1 to 19996),
// leaves |t| in Globals::t and the probability in Globals::p. Yields once per series term.
void tprob();
}  // namespace ProbModule

// An N as the command takes it: `value` truncated toward zero. A value that no signed 64-bit
// integer holds (too large either way, infinite or NaN) gives kNoN, below every valid N.
inline constexpr std::int64_t kNoN = std::numeric_limits<std::int64_t>::min();
std::int64_t ToN(double value);

class CalcPanel {  // what the Calculate command needs of the control window
  public:
    virtual ~CalcPanel() = default;
    virtual std::string Text(const std::string& field) = 0;
    virtual void Text(const std::string& field, const std::string& text) = 0;
    virtual void Enabled(const std::string& control, bool value) = 0;
    virtual void Visible(const std::string& control, bool value) = 0;
    virtual void SetFocus(const std::string& field) = 0;
    virtual void MsgBox(const std::string& text) = 0;
};

void CalcBtn_Action(CalcPanel& panel);  // the Calculate command

}  // namespace korvane
