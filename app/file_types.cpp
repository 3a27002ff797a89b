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

// A new type goes into its static first and is filled there, then joins the list of all types,
// and is registered last by reading it, through its accessor, as its name.
void Initialize(std::shared_ptr<platform::FileType>& slot,
                std::shared_ptr<platform::FileType> (*accessor)(), const Fields& fields) {
    slot = std::make_shared<platform::FileType>();
    platform::FileType& type = platform::NotNil(slot.get());
    type.Name(fields.name);
    type.Extensions(fields.extensions);
    type.MacType(fields.macType);
    type.MacCreator(fields.macCreator);
    type.MimeType(fields.mimeType);
    type.Imported(fields.imported);
    type.ConformsTo(fields.conformsTo);
    pAllFileTypes.push_back(slot);
    static_cast<void>(static_cast<std::string>(platform::NotNil(accessor().get())));
}

}  // namespace

void _Initialize() {
    Initialize(pText, Text, kText);
    Initialize(pUntitledType, UntitledType, kUntitled);
}

}  // namespace korvane::FileTypes
