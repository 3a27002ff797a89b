#include "platform/core/record.h"

#include <bit>
#include <cstdint>
#include <string>

namespace platform {

namespace {

bool IsAsciiLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool IsMacProcID(std::string_view name) {
    constexpr std::string_view kMacProcID = "macprocid";
    if (name.size() != kMacProcID.size()) {
        return false;
    }
    for (std::size_t i = 0; i < name.size(); ++i) {
        char c = name[i];
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
        if (c != kMacProcID[i]) {
            return false;
        }
    }
    return true;
}

// Walks the property list of one record. Every read is checked against the end of the view,
// so a damaged record ends in RecordFormatException and never in a read past its bytes.
class RecordReader {
  public:
    explicit RecordReader(std::string_view body) : body_(body) {}

    bool AtEnd() const { return pos_ == body_.size(); }

    std::string_view Name() {
        const std::size_t start = pos_;
        property_start_ = start;
        std::size_t end = start;
        while (end < body_.size() && IsAsciiLetter(body_[end])) {
            ++end;
        }
        if (end == body_.size()) {
            Fail("a property name runs to the end without a blank");
        }
        if (body_[end] != ' ') {
            Fail("a property name holds a byte that is no ASCII letter");
        }
        if (end == start) {
            Fail("a property name is empty");
        }
        pos_ = end + 1;
        return body_.substr(start, end - start);
    }

    // `size` bytes, little-endian, as an unsigned value.
    std::uint64_t Unsigned(std::size_t size, std::string_view name) {
        const std::string_view bytes = Take(size, name);
        std::uint64_t value = 0;
        for (std::size_t i = size; i-- > 0;) {
            value = (value << 8) | static_cast<unsigned char>(bytes[i]);
        }
        return value;
    }

    PropertyValue Value(Form form, std::string_view name) {
        switch (form) {
            case Form::Integer:
                return PropertyValue(std::in_place_type<std::int64_t>,
                                     static_cast<std::int64_t>(Unsigned(8, name)));
            case Form::Boolean:
                // 0 is false and 1 is true; any other byte is taken as true, as a C flag would.
                return PropertyValue(std::in_place_type<bool>, Unsigned(1, name) != 0);
            case Form::SmallEnum:
                return PropertyValue(std::in_place_type<std::uint8_t>,
                                     static_cast<std::uint8_t>(Unsigned(1, name)));
            case Form::Colour:
                return PropertyValue(std::in_place_type<Colour>,
                                     Colour{static_cast<std::uint32_t>(Unsigned(4, name))});
            case Form::Single:
                return PropertyValue(
                    std::in_place_type<float>,
                    std::bit_cast<float>(static_cast<std::uint32_t>(Unsigned(4, name))));
            case Form::Double:
                return PropertyValue(std::in_place_type<double>,
                                     std::bit_cast<double>(Unsigned(8, name)));
            case Form::String: {
                const auto count = static_cast<std::size_t>(Unsigned(4, name));
                return PropertyValue(std::in_place_type<std::string>, Take(count, name));
            }
        }
        Fail("property " + std::string(name) + " has a form the reader does not know");
    }

    [[noreturn]] void Fail(const std::string& what) const {
        // Offsets count the leading byte, as a dump of the record shows them.
        throw RecordFormatException("Layout record is malformed in the property at byte " +
                                    std::to_string(property_start_ + 1) + ": " + what + ".");
    }

  private:
    std::string_view Take(std::size_t size, std::string_view name) {
        if (size > body_.size() - pos_) {
            Fail("the value of " + std::string(name) + " runs past the end of the record");
        }
        const std::string_view bytes = body_.substr(pos_, size);
        pos_ += size;
        return bytes;
    }

    std::string_view body_;
    std::size_t pos_ = 0;
    std::size_t property_start_ = 0;
};

}  // namespace

void ApplyRecord(Object& target, std::string_view record) {
    if (record.empty()) {
        throw RecordFormatException("Layout record is empty: it lacks even its leading byte.");
    }
    // The leading byte tops out at 255, so the length always comes from the view itself.
    RecordReader reader(record.substr(1));
    const ClassInfo& cls = target.Class();
    while (!reader.AtEnd()) {
        const std::string_view name = reader.Name();
        const PropertyDef* def = cls.FindProperty(name);
        if (def == nullptr) {
            if (IsMacProcID(name)) {
                reader.Unsigned(8, name);  // a resource id of another platform: read, not applied
                continue;
            }
            reader.Fail(std::string(name) + " is no property of " + std::string(cls.name));
        }
        const PropertyValue value = reader.Value(def->form, name);
        if (def->set != nullptr) {
            def->set(target, value);
        }
    }
}

}  // namespace platform
