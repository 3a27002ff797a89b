// The two pictures of the application's resources. Each loader opens its file at the first call
// that finds it and keeps the one shared Picture for the rest of the run; a missing file gives
// nil, and the next call tries again.
#pragma once

#include "platform/qt/picture.h"

namespace korvane {

platform::Picture* tformula();  // "tformula.png": the two t formulas, for the information window
platform::Picture* tlarge();    // "tlarge.png": the title banner, for the about and control windows

}  // namespace korvane
