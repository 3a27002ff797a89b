#include "platform/core/recorder.h"

namespace platform::recorder {

namespace {

// The program runs on one thread, so plain statics need no lock.
struct Log {
    bool on = false;
    std::vector<std::string> lines;
};

Log& TheLog() {
    static Log log;
    return log;
}

}  // namespace

void Start() {
    TheLog().lines.clear();
    TheLog().on = true;
}

void Stop() {
    TheLog().on = false;
}

bool On() {
    return TheLog().on;
}

void Note(const std::string& line) {
    if (TheLog().on) {
        TheLog().lines.push_back(line);
    }
}

std::vector<std::string> Lines() {
    return TheLog().lines;
}

}  // namespace platform::recorder
