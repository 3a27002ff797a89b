// Layout records written in the source like their tables, encoded at compile time.
//
//   using namespace platform::rec;
//   constexpr auto kTimer1Record = PLATFORM_RECORD(Int("Period", 4000), Int("RunMode", 1));
//   platform::ApplyRecord(timer, kTimer1Record.view());
//
// A field maker (Int, Bool, Enum8, Color, Single, Double, Str) pairs a property name with its
// value in the form the target class declares for it. PLATFORM_RECORD lays the fields out in the
// stored format that record.h describes and the reader expects: one leading byte min(n, 255),
// then the n bytes of the fields in the order given. A std::array<Field, N> among the fields
// stands for the fields it holds, so fields that several records share are written once. A name
// that is not ASCII letters, a colour above 0xFFFFFF or a string over 4 GiB stops the build.
//
// The macro evaluates its fields twice (once to size the record, once to fill it) inside a
// lambda, so they take literals, constants of namespace or class scope and template parameters,
// not local variables.
#pragma once

#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <type_traits>

namespace platform::rec {

// One property, its value already in stored bytes.
struct Field {
    std::string_view name;
    std::array<char, 8> value{};  // the fixed-size part, little-endian (a string's byte count)
    std::size_t value_size = 0;
    std::string_view text;  // a string's UTF-8 bytes, after its count

    constexpr std::size_t size() const { return name.size() + 1 + value_size + text.size(); }
};

// A whole record: the leading byte and the property list, nothing after.
template <std::size_t N>
struct Record {
    std::array<char, N> bytes{};

    constexpr std::string_view view() const { return {bytes.data(), bytes.size()}; }
};

namespace detail {

constexpr Field Fixed(std::string_view name, std::uint64_t bits, std::size_t size) {
    Field field;
    field.name = name;
    for (std::size_t i = 0; i < size; ++i) {
        field.value[i] = static_cast<char>((bits >> (8 * i)) & 0xFF);
    }
    field.value_size = size;
    return field;
}

}  // namespace detail

constexpr Field Int(std::string_view name, std::int64_t value) {
    return detail::Fixed(name, static_cast<std::uint64_t>(value), 8);
}

constexpr Field Bool(std::string_view name, bool value) {
    return detail::Fixed(name, value ? 1 : 0, 1);
}

constexpr Field Enum8(std::string_view name, std::uint8_t value) {
    return detail::Fixed(name, value, 1);
}

// 0x00RRGGBB, stored little-endian: blue, green, red, 0.
constexpr Field Color(std::string_view name, std::uint32_t rgb) {
    if (rgb > 0xFFFFFF) {
        throw "a record colour is 0x00RRGGBB";
    }
    return detail::Fixed(name, rgb, 4);
}

constexpr Field Single(std::string_view name, float value) {
    return detail::Fixed(name, std::bit_cast<std::uint32_t>(value), 4);
}

constexpr Field Double(std::string_view name, double value) {
    return detail::Fixed(name, std::bit_cast<std::uint64_t>(value), 8);
}

// A 4-byte byte count, then the UTF-8 bytes themselves: "©" counts 2.
constexpr Field Str(std::string_view name, std::string_view utf8) {
    if (utf8.size() > 0xFFFFFFFFu) {
        throw "a record string is longer than its 32-bit count";
    }
    Field field = detail::Fixed(name, utf8.size(), 4);
    field.text = utf8;
    return field;
}

namespace detail {

template <class Part>
inline constexpr std::size_t kFieldCount = 0;  // neither a field nor a group: no record part
template <>
inline constexpr std::size_t kFieldCount<Field> = 1;
template <std::size_t N>
inline constexpr std::size_t kFieldCount<std::array<Field, N>> = N;

// The fields in the order given; a group (std::array<Field, N>) stands for its fields in turn.
template <class... Parts>
constexpr auto FieldList(const Parts&... parts) {
    static_assert(((kFieldCount<Parts> > 0) && ...), "a record holds fields and groups of fields");
    std::array<Field, (std::size_t{0} + ... + kFieldCount<Parts>)> fields{};
    std::size_t pos = 0;
    [[maybe_unused]] const auto append = [&](const auto& part) {  // unused by an empty record
        if constexpr (std::same_as<std::remove_cvref_t<decltype(part)>, Field>) {
            fields[pos++] = part;
        } else {
            for (const Field& field : part) {
                fields[pos++] = field;
            }
        }
    };
    (append(parts), ...);
    return fields;
}

constexpr bool IsName(std::string_view name) {
    if (name.empty()) {
        return false;
    }
    for (char c : name) {
        if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'))) {
            return false;
        }
    }
    return true;
}

template <std::size_t Count>
constexpr std::size_t BodySize(const std::array<Field, Count>& fields) {
    std::size_t size = 0;
    for (const Field& field : fields) {
        size += field.size();
    }
    return size;
}

// MakeFields is a captureless lambda: its type alone gives the fields, so their total size can
// size the array. constexpr rather than consteval: clang 14 crashes on a consteval call with a
// lambda argument inside a function body; the macro forces compile time instead.
template <class MakeFields>
constexpr auto Encode(MakeFields) {
    constexpr auto fields = MakeFields{}();
    constexpr std::size_t n = BodySize(fields);
    Record<1 + n> record;
    record.bytes[0] = static_cast<char>(n < 255 ? n : 255);
    std::size_t pos = 1;
    for (const Field& field : fields) {
        if (!IsName(field.name)) {
            throw "a record property name is one or more ASCII letters";
        }
        for (char c : field.name) {
            record.bytes[pos++] = c;
        }
        record.bytes[pos++] = ' ';
        for (std::size_t i = 0; i < field.value_size; ++i) {
            record.bytes[pos++] = field.value[i];
        }
        for (char c : field.text) {
            record.bytes[pos++] = c;
        }
    }
    return record;
}

}  // namespace detail

// Fields that several records share, to be written once and placed among a record's fields.
template <class... Parts>
constexpr auto Fields(const Parts&... parts) {
    return detail::FieldList(parts...);
}

}  // namespace platform::rec

// The constexpr local makes every use a compile-time encoding, also outside constant contexts.
#define PLATFORM_RECORD(...)                                                 \
    ([] {                                                                    \
        constexpr auto record = ::platform::rec::detail::Encode(             \
            [] { return ::platform::rec::detail::FieldList(__VA_ARGS__); }); \
        return record;                                                       \
    }())
