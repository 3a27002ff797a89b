// One QApplication for the whole test program, made the way the program makes it.
#include <gtest/gtest.h>

#include "platform/qt/runtime.h"

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    platform::RuntimeInit();
    return RUN_ALL_TESTS();
}
