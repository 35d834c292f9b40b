#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <istream>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/tree_internal.h>
#include <tolv/core/utf8.h>

// The event parser of Boost.JSON and the few definitions that it needs; <boost/json/src.hpp> would
// put the whole library in here. Boost marks some of its classes as visible; in here none may be,
// since a program may bring a Boost of its own, of another version.
#include <boost/config.hpp>
#undef BOOST_SYMBOL_VISIBLE
#define BOOST_SYMBOL_VISIBLE
#define BOOST_JSON_SOURCE
#include <boost/json/basic_parser_impl.hpp>
#include <boost/json/detail/impl/default_resource.ipp>
#include <boost/json/detail/impl/shared_resource.ipp>
#include <boost/json/detail/impl/stack.ipp>
#include <boost/json/impl/error.ipp>

namespace Tolv::MetaData {

using Detail::Access;

namespace {

using ErrorCode = boost::json::error_code;
using Text = boost::json::string_view;

/// The parser calls itself once a level, about 300 bytes of stack each: a larger bound of the
/// caller's could not be kept.
constexpr std::size_t mostDepth = 4096;

/// Keys and values that do not stand in a container yet. The values of most messages fit the room
/// inside. There is deliberately nothing that outlives a call: what a huge text needed is given
/// back, and thread-local objects would keep the library from being unloaded.
class ValueStack {
public:
    ValueStack() = default;
    ValueStack(ValueStack const&) = delete;
    ValueStack& operator=(ValueStack const&) = delete;
    ~ValueStack() {
        std::destroy_n(items_, size_);
        if (items_ != own())
            ::operator delete(items_);
    }

    /// A new null element on top. It moves with the next call.
    Element& push() {
        if (size_ == capacity_)
            grow();
        return *new (items_ + size_++) Element;
    }

    [[nodiscard]] std::span<Element> top(std::size_t count) const noexcept {
        return {items_ + size_ - count, count};
    }

    /// Takes the topmost elements away, which must be null.
    void drop(std::size_t count) noexcept { size_ -= count; }

private:
    static constexpr std::size_t inside = 128;

    Element* own() noexcept { return reinterpret_cast<Element*>(room_); }

    void grow() {
        auto* const grown = static_cast<Element*>(::operator new(capacity_ * 2 * sizeof(Element)));
        std::uninitialized_move_n(items_, size_, grown); // leaves null elements: nothing to destroy
        if (items_ != own())
            ::operator delete(items_);
        items_ = grown;
        capacity_ *= 2;
    }

    alignas(Element) std::byte room_[inside * sizeof(Element)];
    Element* items_ = own();
    std::size_t size_ = 0;
    std::size_t capacity_ = inside;
};

/// Builds the tree from the events of the parser. The whole text is given to the parser at once,
/// so that texts without escapes and all numbers arrive in one piece, as a part of the text.
class Builder {
public:
    // The most that a container and a text can hold: the parser refuses more by itself.
    static constexpr std::size_t max_array_size = std::numeric_limits<std::uint32_t>::max() - 1;
    static constexpr std::size_t max_object_size = max_array_size;
    static constexpr std::size_t max_string_size = std::numeric_limits<std::uint32_t>::max();
    static constexpr std::size_t max_key_size = max_string_size;

    static bool on_document_begin(ErrorCode&) { return true; }
    static bool on_document_end(ErrorCode&) { return true; }

    static bool on_array_begin(ErrorCode&) { return true; }
    bool on_array_end(std::size_t count, ErrorCode&) {
        auto array = Access::takeArray(stack_.top(count));
        stack_.drop(count);
        stack_.push().swap(array);
        return true;
    }

    static bool on_object_begin(ErrorCode&) { return true; }
    bool on_object_end(std::size_t count, ErrorCode& error) {
        std::ptrdiff_t duplicate = -1;
        auto object = Access::takeObject(stack_.top(count * 2), duplicate);
        stack_.drop(count * 2);
        if (duplicate >= 0) {
            noteDuplicate(object.object(), static_cast<std::size_t>(duplicate));
            error = make_error_code(boost::json::error::syntax);
            return false;
        }
        stack_.push().swap(object);
        return true;
    }

    bool on_string_part(Text part, std::size_t, ErrorCode&) {
        parts_.append(part.data(), part.size());
        return true;
    }
    bool on_string(Text part, std::size_t size, ErrorCode&) {
        std::string_view const text(part.data(), part.size());
        if (size == text.size()) {
            stack_.push().setString(text);
        } else {
            parts_.append(text);
            stack_.push().setString(parts_);
            parts_.clear();
        }
        return true;
    }
    bool on_key_part(Text part, std::size_t size, ErrorCode& error) {
        return on_string_part(part, size, error);
    }
    bool on_key(Text part, std::size_t size, ErrorCode& error) {
        return on_string(part, size, error);
    }

    /// Comes only before an end of text in the middle of a number, which is refused anyway.
    static bool on_number_part(Text, ErrorCode&) { return true; }
    bool on_int64(std::int64_t value, Text text, ErrorCode&) {
        if (value == 0 && text.front() == '-')
            stack_.push().setFloating(-0.0);
        else
            stack_.push().setSigned(value);
        return true;
    }
    bool on_uint64(std::uint64_t value, Text, ErrorCode&) {
        stack_.push().setUnsigned(value);
        return true;
    }
    /// The parser's own value is off by some units in the last place; it only tells a number that
    /// is too small, which is read as zero, from one that is too large.
    bool on_double(double roughly, Text text, ErrorCode& error) {
        double value = 0;
        auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
        if (result.ec == std::errc::result_out_of_range && std::abs(roughly) < 1)
            value = text.front() == '-' ? -0.0 : 0.0;
        else if (result.ec != std::errc() || std::isinf(value)) {
            error = make_error_code(boost::json::error::exponent_overflow);
            refusedAt_ = text.data();
            return false;
        }
        stack_.push().setFloating(value);
        return true;
    }

    bool on_bool(bool value, ErrorCode&) {
        stack_.push().setBoolean(value);
        return true;
    }
    bool on_null(ErrorCode&) {
        stack_.push();
        return true;
    }

    static bool on_comment_part(Text, ErrorCode&) { return true; }
    static bool on_comment(Text, ErrorCode&) { return true; }

    /// The only value left when all was accepted.
    [[nodiscard]] Element& result() const noexcept { return stack_.top(1).front(); }
    /// Where the refused number starts, or null.
    [[nodiscard]] char const* refusedAt() const noexcept { return refusedAt_; }
    /// The place of the refused key in its object, or -1.
    [[nodiscard]] std::ptrdiff_t duplicatePlace() const noexcept { return duplicatePlace_; }
    [[nodiscard]] std::string const& duplicateKey() const noexcept { return duplicateKey_; }

private:
    void noteDuplicate(Object const& object, std::size_t place) {
        auto member = object.begin();
        for (std::size_t i = 0; i < place; ++i)
            ++member;
        duplicateKey_ = member->key();
        duplicatePlace_ = static_cast<std::ptrdiff_t>(place);
    }

    ValueStack stack_;
    std::string parts_; ///< of a text with escapes that is longer than the parser's buffer
    char const* refusedAt_ = nullptr;
    std::ptrdiff_t duplicatePlace_ = -1;
    std::string duplicateKey_;
};

[[noreturn]] void refuse(std::string const& what, std::size_t offset) {
    throw Exception::InvalidParameter("JSON text refused: " + what + " at byte " +
                                      std::to_string(offset));
}

/// A key in quotes for a message, cut at 60 bytes. It is escaped: a NUL would end the message.
std::string quoted(std::string_view key) {
    auto shown = key.substr(0, 60);
    shown = shown.substr(0, findInvalidUtf8(shown)); // the cut may be inside of a character
    Element element;
    element.setString(shown);
    std::string text;
    WriterJson::Write(element, text);
    if (shown.size() < key.size())
        text.insert(text.size() - 1, "...");
    return text;
}

std::string describeByte(char byte) {
    auto const code = static_cast<unsigned char>(byte);
    if (code > 0x20 && code < 0x7F)
        return std::string("unexpected '") + byte + '\'';
    constexpr char digits[] = "0123456789ABCDEF";
    return std::string("unexpected byte 0x") + digits[code >> 4U] + digits[code & 0xFU];
}

/// The offset of the key at `place` in the innermost object that is open at the end of `text`,
/// which the parser has accepted so far.
std::size_t offsetOfKey(std::string_view text, std::size_t place) {
    std::vector<std::size_t> keys;    // offsets of the keys of all open objects
    std::vector<std::size_t> objects; // how many of `keys` stand before each open object
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '{') {
            objects.push_back(keys.size());
        } else if (text[i] == '}') {
            keys.resize(objects.back());
            objects.pop_back();
        } else if (text[i] == '"') {
            auto const start = i++;
            while (text[i] != '"')
                i += text[i] == '\\' ? 2 : 1;
            auto const next = text.find_first_not_of(" \t\n\r", i + 1);
            if (next != std::string_view::npos && text[next] == ':')
                keys.push_back(start);
        }
    }
    return keys[objects.back() + place];
}

[[noreturn]] void refuse(std::string_view text, std::size_t offset, ErrorCode const& code,
                         Builder const& builder, std::size_t depth) {
    using boost::json::error;
    if (builder.duplicatePlace() >= 0)
        refuse("key " + quoted(builder.duplicateKey()) + " stands twice in one object",
               offsetOfKey(text.substr(0, offset),
                           static_cast<std::size_t>(builder.duplicatePlace())));
    // A cut character looks to the parser like the end of the text.
    if (auto const invalid = findInvalidUtf8(text); invalid <= offset)
        refuse("invalid UTF-8", invalid);
    switch (static_cast<error>(code.value())) {
    case error::incomplete:
        if (text.find_first_not_of(" \t\n\r") == std::string_view::npos)
            refuse("there is no value", text.size());
        refuse("unexpected end", text.size());
    case error::exponent_overflow:
        refuse("number out of the range of a double",
               builder.refusedAt() != nullptr
                   ? static_cast<std::size_t>(builder.refusedAt() - text.data())
                   : offset);
    case error::too_deep:
        refuse("depth of more than " + std::to_string(depth) + " arrays and objects", offset);
    case error::illegal_leading_surrogate:
    case error::illegal_trailing_surrogate:
        refuse("half of a surrogate pair", offset);
    case error::expected_hex_digit:
        // The parser stands at the wrong digit or at the byte before it.
        refuse("expected four hexadecimal digits",
               std::min(
                   text.find_first_not_of("0123456789ABCDEFabcdef", text.rfind("\\u", offset) + 2),
                   text.size()));
    case error::object_too_large:
    case error::array_too_large:
        refuse("container of more than 4294967294 elements", offset);
    case error::key_too_large:
    case error::string_too_large:
        refuse("string of 4 GiB or more", offset);
    default:
        break;
    }
    if (text.starts_with("\xEF\xBB\xBF"))
        refuse("byte order mark", 0);
    refuse(offset < text.size() ? describeByte(text[offset]) : "unexpected end", offset);
}

/// All that is left in `stream`.
std::string readAll(std::istream& stream) {
    std::istream::sentry const ready(stream, true);
    if (!ready)
        throw Exception::InvalidParameter("JSON text refused: the stream cannot be read");
    constexpr std::size_t least = std::size_t{1} << 16U;
    std::string text;
    std::size_t used = 0;
    auto* const buffer = stream.rdbuf();
    for (;;) {
        if (used == text.size()) {
            // What the buffer holds is known to be there; beyond it, growing by half keeps this
            // linear.
            auto const held = std::max<std::streamsize>(buffer->in_avail(), 0);
            text.resize(used + std::max({static_cast<std::size_t>(held) + 1, used / 2, least}));
        }
        std::streamsize count = 0;
        try {
            count =
                buffer->sgetn(text.data() + used, static_cast<std::streamsize>(text.size() - used));
        } catch (std::exception const& e) {
            throw Exception::InvalidParameter(
                std::string("JSON text refused: the stream failed: ") + e.what());
        }
        if (count <= 0)
            break;
        used += static_cast<std::size_t>(count);
    }
    stream.setstate(std::ios_base::eofbit);
    text.resize(used);
    return text;
}

} // namespace

void ReaderJson::Read(Element& element, std::string_view text, Limits const& limits) {
    boost::json::parse_options options;
    options.max_depth = std::min(limits.depth, mostDepth);
    boost::json::basic_parser<Builder> parser(options);
    auto& builder = parser.handler();
    ErrorCode error;
    // The parser computes with the pointer even where there is no byte.
    auto const* const begin = text.empty() ? "" : text.data();
    auto const accepted = parser.write_some(false, begin, text.size(), error);
    if (error)
        refuse(text, accepted, error, builder, options.max_depth);
    if (accepted != text.size())
        refuse("text behind the value", accepted);
    element.swap(builder.result());
}

void ReaderJson::Read(Element& element, std::istream& stream, Limits const& limits) {
    Read(element, readAll(stream), limits);
}

} // namespace Tolv::MetaData
