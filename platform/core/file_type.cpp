#include "platform/core/file_type.h"

#include <algorithm>

namespace platform {

namespace {

std::vector<FileTypeRegistration>& Registry() {
    static std::vector<FileTypeRegistration> registry;
    return registry;
}

}  // namespace

void RuntimeRegisterFileType(const std::string& name, const std::string& creator,
                             const std::string& type, const std::string& extensions,
                             const std::string& uti) {
    Registry().push_back({name, creator, type, extensions, uti});
}

void RuntimeDeregisterFileType(const std::string& name) {
    auto& registry = Registry();
    auto found =
        std::find_if(registry.begin(), registry.end(),
                     [&](const FileTypeRegistration& entry) { return entry.name == name; });
    if (found != registry.end()) {
        registry.erase(found);
    }
}

const std::vector<FileTypeRegistration>& RegisteredFileTypes() {
    return Registry();
}

void ClearFileTypeRegistry() {
    Registry().clear();
}

const ClassInfo& FileType::StaticClass() {
    static const ClassInfo info{"FileType", &Object::StaticClass(), {}};
    return info;
}

void FileType::Register() {
    if (registered_) {
        return;
    }
    RuntimeRegisterFileType(name_, macCreator_, macType_, extensions_, uti_);
    registered_ = true;
}

void FileType::Deregister() {
    if (!registered_) {
        return;
    }
    RuntimeDeregisterFileType(name_);
    registered_ = false;
}

FileType::operator std::string() {
    Register();
    return name_;
}

void FileType::Assign(std::string& field, const std::string& value) {
    // The registration was made under the old values; take it back before any of them changes.
    Deregister();
    field = value;
}

}  // namespace platform
