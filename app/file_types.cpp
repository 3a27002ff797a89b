#include "app/file_types.h"

#include <string>

#include "platform/core/failure.h"

namespace korvane::FileTypes {

std::vector<std::shared_ptr<platform::FileType>> pAllFileTypes;
std::shared_ptr<platform::FileType> pText;
std::shared_ptr<platform::FileType> pUntitledType;

std::shared_ptr<platform::FileType> Text() {
    return pText;
}

std::shared_ptr<platform::FileType> UntitledType() {
    return pUntitledType;
}

namespace {

struct Fields {
    const char* name;
    const char* extensions;
    const char* macType;
    const char* macCreator;
    const char* mimeType;
    bool imported;
    const char* conformsTo;
};

constexpr Fields kText{"text", "", "TEXT", "R*ch", "", true, ""};
constexpr Fields kUntitled{"", "", "", "", "", true, ""};

std::shared_ptr<platform::FileType> Make(const Fields& fields) {
    auto type = std::make_shared<platform::FileType>();
    type->Name(fields.name);
    type->Extensions(fields.extensions);
    type->MacType(fields.macType);
    type->MacCreator(fields.macCreator);
    type->MimeType(fields.mimeType);
    type->Imported(fields.imported);
    type->ConformsTo(fields.conformsTo);
    return type;
}

// Reading a type as its name is what registers it.
void RegisterByName(const std::shared_ptr<platform::FileType>& type) {
    static_cast<void>(static_cast<std::string>(platform::NotNil(type.get())));
}

}  // namespace

void _Initialize() {
    pText = Make(kText);
    pAllFileTypes.push_back(pText);
    RegisterByName(Text());

    pUntitledType = Make(kUntitled);
    pAllFileTypes.push_back(pUntitledType);
    RegisterByName(UntitledType());
}

}  // namespace korvane::FileTypes
