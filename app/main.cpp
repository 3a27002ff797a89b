// The process entry. The program takes no arguments and reads no environment of its own.
#include "app/startup.h"

int main() {
    return korvane::Main();
}
