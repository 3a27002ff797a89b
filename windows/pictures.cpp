#include "windows/pictures.h"

#include <memory>
#include <string>

namespace korvane {

namespace {

// The picture kept in `pic`, opened on the first call that finds the file. A nil result is not
// kept as an answer: the next call tries the file again.
platform::Picture* Shared(std::unique_ptr<platform::Picture>& pic, const std::string& name,
                          const char* description) {
    if (!pic) {
        pic = platform::Picture::_OpenFromApp(name);
        if (pic) {
            pic->Description(description);
        }
    }
    return pic.get();
}

}  // namespace

platform::Picture* tformula() {
    static std::unique_ptr<platform::Picture> pic;
    return Shared(pic, "tformula.png", "Formulas of t and df for independent and related means");
}

platform::Picture* tlarge() {
    static std::unique_ptr<platform::Picture> pic;
    return Shared(pic, "tlarge.png", "Korvane, Student's t-test from summary statistics");
}

}  // namespace korvane
