// The two file types the application names to the platform: "text", and the untitled type with
// no strings at all. Nothing in the application opens or saves a document; the types are
// registered once during start-up and stay registered.
#pragma once

#include <memory>
#include <vector>

#include "platform/core/file_type.h"

namespace korvane::FileTypes {

// Every type, in registration order: the text type, then the untitled type.
extern std::vector<std::shared_ptr<platform::FileType>> pAllFileTypes;
extern std::shared_ptr<platform::FileType> pText;
extern std::shared_ptr<platform::FileType> pUntitledType;

std::shared_ptr<platform::FileType> Text();
std::shared_ptr<platform::FileType> UntitledType();

// Makes both types, in the order above, and registers them.
void _Initialize();

}  // namespace korvane::FileTypes
