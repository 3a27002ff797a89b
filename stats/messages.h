// The messages the Calculate command shows, one place for the engine that shows them and for
// the tests, fuzz targets and proof runs that expect them. Only the engine's own test compares
// them with their literal texts, so a typo here still fails a test.
#pragma once

#include <array>

namespace korvane::messages {

inline constexpr const char* kChooseTest =
    "Select Independent or Related t-test and then enter appropriate data";
inline constexpr const char* kMean1 = "Please enter the mean of the 1st sample";
inline constexpr const char* kMean2 = "Please enter the mean of the 2nd sample";
inline constexpr const char* kSd1 = "Please enter the standard deviation of the 1st sample";
inline constexpr const char* kSd2 = "Please enter the standard deviation of the 2nd sample";
inline constexpr const char* kN1 = "Please enter the N of the 1st sample";
inline constexpr const char* kN2 = "Please enter the N of the 2nd sample";
inline constexpr const char* kCorrelationBlank =
    "Please enter the correlation between Sample 1 and Sample 2";
inline constexpr const char* kIndependentN = "N for each sample must range from 2-9999";
inline constexpr const char* kPairedN = "N of paired samples must range from 2-9999";
inline constexpr const char* kCorrelation = "Correlation must range from -1.00 thru +1.00";

// Every message the command can show, for checks that a shown text is one of them.
inline constexpr std::array kAll{kChooseTest,   kMean1,   kMean2,      kSd1,
                                 kSd2,          kN1,      kN2,         kCorrelationBlank,
                                 kIndependentN, kPairedN, kCorrelation};

}  // namespace korvane::messages
