// The file types: what start-up registers, and how a registered type behaves when it changes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "app/file_types.h"
#include "app/startup.h"
#include "platform/core/file_type.h"

namespace {

using platform::FileTypeRegistration;
using platform::RegisteredFileTypes;
namespace FileTypes = korvane::FileTypes;

const FileTypeRegistration kTextEntry{"text", "R*ch", "TEXT", "", ""};
const FileTypeRegistration kUntitledEntry{"", "", "", "", ""};

class FileTypesTest : public testing::Test {
  protected:
    void SetUp() override {
        platform::ClearFileTypeRegistry();
        // The three initialiser entries of the file types come first in the table.
        for (platform::Initializer entry : korvane::Initializers().first(3)) {
            entry();
        }
    }
    void TearDown() override { platform::ClearFileTypeRegistry(); }
};

TEST_F(FileTypesTest, InitialisingRegistersTheTextTypeThenTheUntitledTypeWithTheirFields) {
    FileTypes::_Initialize();

    EXPECT_EQ(RegisteredFileTypes(),
              (std::vector<FileTypeRegistration>{kTextEntry, kUntitledEntry}));
    ASSERT_EQ(FileTypes::pAllFileTypes.size(), 2u);
    EXPECT_EQ(FileTypes::pAllFileTypes[0], FileTypes::pText);
    EXPECT_EQ(FileTypes::pAllFileTypes[1], FileTypes::pUntitledType);
    EXPECT_EQ(FileTypes::Text(), FileTypes::pText);
    EXPECT_EQ(FileTypes::UntitledType(), FileTypes::pUntitledType);

    const platform::FileType& text = *FileTypes::Text();
    EXPECT_TRUE(text.Registered());
    EXPECT_TRUE(text.Imported());
    EXPECT_EQ(text.MimeType(), "");
    EXPECT_EQ(text.ConformsTo(), "");
    EXPECT_EQ(text.UTI(), "");
    const platform::FileType& untitled = *FileTypes::UntitledType();
    EXPECT_TRUE(untitled.Registered());
    EXPECT_TRUE(untitled.Imported());
}

TEST_F(FileTypesTest, TheInitialiserEntriesEmptyTheStaticsForAnotherRun) {
    FileTypes::_Initialize();
    for (platform::Initializer entry : korvane::Initializers().first(3)) {
        entry();
    }
    EXPECT_TRUE(FileTypes::pAllFileTypes.empty());
    EXPECT_EQ(FileTypes::pText, nullptr);
    EXPECT_EQ(FileTypes::pUntitledType, nullptr);
}

TEST_F(FileTypesTest, RegisteringATypeAgainOrReadingItsNameAddsNoSecondEntry) {
    FileTypes::_Initialize();
    platform::FileType& text = *FileTypes::Text();

    text.Register();
    EXPECT_EQ(static_cast<std::string>(text), "text");
    EXPECT_EQ(static_cast<std::string>(*FileTypes::UntitledType()), "");

    EXPECT_EQ(RegisteredFileTypes(),
              (std::vector<FileTypeRegistration>{kTextEntry, kUntitledEntry}));
}

TEST_F(FileTypesTest, RenamingARegisteredTypeTakesBackTheRegistrationUnderItsOldName) {
    FileTypes::_Initialize();
    platform::FileType& text = *FileTypes::Text();

    text.Name("plain");
    EXPECT_FALSE(text.Registered());
    EXPECT_EQ(RegisteredFileTypes(), (std::vector<FileTypeRegistration>{kUntitledEntry}));

    text.Register();
    EXPECT_EQ(RegisteredFileTypes(), (std::vector<FileTypeRegistration>{
                                         kUntitledEntry, {"plain", "R*ch", "TEXT", "", ""}}));
}

TEST_F(FileTypesTest, EveryStringFieldOfARegisteredTypeTakesBackOnlyItsOwnRegistration) {
    using Setter = void (platform::FileType::*)(const std::string&);
    const Setter setters[] = {&platform::FileType::Extensions, &platform::FileType::MacType,
                              &platform::FileType::MacCreator, &platform::FileType::MimeType,
                              &platform::FileType::ConformsTo, &platform::FileType::UTI};
    for (Setter set : setters) {
        platform::ClearFileTypeRegistry();
        FileTypes::_Initialize();

        // The untitled type is registered under the empty name; its change must leave "text".
        (FileTypes::UntitledType().get()->*set)("x");

        EXPECT_FALSE(FileTypes::UntitledType()->Registered());
        EXPECT_TRUE(FileTypes::Text()->Registered());
        EXPECT_EQ(RegisteredFileTypes(), (std::vector<FileTypeRegistration>{kTextEntry}));
    }
}

TEST_F(FileTypesTest, ImportedOrAChangeToAnUnregisteredTwinLeavesTheRegistrationAlone) {
    FileTypes::_Initialize();
    FileTypes::Text()->Imported(false);
    EXPECT_TRUE(FileTypes::Text()->Registered());
    platform::FileType twin;
    twin.Name("text");

    twin.MacType("TXT2");

    EXPECT_EQ(RegisteredFileTypes(),
              (std::vector<FileTypeRegistration>{kTextEntry, kUntitledEntry}));
}

}  // namespace
