// File types: the kinds of document an application names to the desktop.
//
// A FileType holds the fields an application gives a type. Register enters it once in the
// platform's registry (RuntimeRegisterFileType); assigning any string field of a registered type
// takes the registration back first, under the name it was registered with, and the type stays
// unregistered until Register is called again. The registry is a table in the process: nothing on
// this desktop opens or saves a document by it, and tests read it through RegisteredFileTypes.
#pragma once

#include <string>
#include <vector>

#include "platform/core/object.h"

namespace platform {

// One entry of the registry, with the values RuntimeRegisterFileType was given.
struct FileTypeRegistration {
    std::string name, creator, type, extensions, uti;
    friend bool operator==(const FileTypeRegistration&, const FileTypeRegistration&) = default;
};

void RuntimeRegisterFileType(const std::string& name, const std::string& creator,
                             const std::string& type, const std::string& extensions,
                             const std::string& uti);
// Takes back the oldest registration of that name; a name never registered changes nothing.
void RuntimeDeregisterFileType(const std::string& name);
const std::vector<FileTypeRegistration>& RegisteredFileTypes();  // in registration order
void ClearFileTypeRegistry();                                    // between tests

class FileType : public Classed<FileType> {
  public:
    static const ClassInfo& StaticClass();

    // Register hands the registry the name, creator, type, extensions and UTI; the MIME type and
    // what the type conforms to are kept, nothing on this desktop reads them.
    void Name(const std::string& v) { Assign(name_, v); }
    void Extensions(const std::string& v) { Assign(extensions_, v); }
    void MacType(const std::string& v) { Assign(macType_, v); }
    void MacCreator(const std::string& v) { Assign(macCreator_, v); }
    void MimeType(const std::string& v) { Assign(mimeType_, v); }
    void ConformsTo(const std::string& v) { Assign(conformsTo_, v); }
    void UTI(const std::string& v) { Assign(uti_, v); }
    // Not part of what the registry is given, so changing it keeps the registration.
    void Imported(bool v) { imported_ = v; }

    void Register();  // registers the type unless it is registered already
    void Deregister();

    // Registers the type, then gives its Name.
    explicit operator std::string();

  private:
    void Assign(std::string& field, const std::string& value);

    std::string name_, extensions_, macType_, macCreator_, mimeType_, conformsTo_, uti_;
    bool imported_ = false;
    bool registered_ = false;
};

}  // namespace platform
