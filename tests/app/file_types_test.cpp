// The file types start-up registers, and how a registered type answers a change.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/file_types.h"
#include "platform/core/file_type.h"

namespace {

using platform::FileType;
using Registry = std::vector<platform::FileTypeRegistration>;
namespace FileTypes = korvane::FileTypes;

const platform::FileTypeRegistration kText{"text", "R*ch", "TEXT", "", ""};
const platform::FileTypeRegistration kUntitled{"", "", "", "", ""};

class FileTypesTest : public testing::Test {
  protected:
    void SetUp() override {
        platform::ClearFileTypeRegistry();
        FileTypes::pAllFileTypes.clear();
        FileTypes::_Initialize();
    }
};

TEST_F(FileTypesTest, StartUpRegistersTheTextTypeThenTheUntitledTypeOnceEach) {
    FileTypes::Text()->Register();  // again: no second entry

    EXPECT_EQ(platform::RegisteredFileTypes(), (Registry{kText, kUntitled}));
    EXPECT_EQ(FileTypes::pAllFileTypes, (std::vector{FileTypes::pText, FileTypes::pUntitledType}));
    EXPECT_EQ(static_cast<std::string>(*FileTypes::Text()), "text");
    EXPECT_TRUE(FileTypes::Text()->Imported());
}

TEST_F(FileTypesTest, ANameOrOtherStringChangedTakesBackOnlyItsOwnTypesRegistration) {
    using Setter = void (FileType::*)(const std::string&);
    const Setter setters[] = {&FileType::Extensions, &FileType::MacType,    &FileType::MacCreator,
                              &FileType::MimeType,   &FileType::ConformsTo, &FileType::UTI};
    for (Setter set : setters) {
        SetUp();
        (FileTypes::UntitledType().get()->*set)("x");  // registered under the empty name
        EXPECT_FALSE(FileTypes::UntitledType()->Registered());
        EXPECT_EQ(platform::RegisteredFileTypes(), Registry{kText});
    }
    FileTypes::Text()->Name("plain");
    EXPECT_EQ(platform::RegisteredFileTypes(), Registry{});
    FileTypes::Text()->Register();
    EXPECT_EQ(platform::RegisteredFileTypes(), (Registry{{"plain", "R*ch", "TEXT", "", ""}}));
}

}  // namespace
