#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <ostream>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <tolv/core/base64.h>
#include <tolv/core/detail/text_run.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/tree.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/utf8.h>

namespace Tolv::MetaData {

using Detail::Access;

namespace {

/// The output text. Small pieces are collected in a block that stays in the cache and then appended
/// together, because a std::string can only grow by appending without being filled with zeros
/// first.
class Output {
public:
    explicit Output(std::string& text) : text_(text) {}
    Output(Output const&) = delete;
    Output& operator=(Output const&) = delete;

    /// The number of bytes that `claim` provides.
    static constexpr std::size_t mostClaimed = 64;

    /// Returns space for `mostClaimed` bytes; pass the end of those written to `commit`.
    char* claim() {
        if (at_ > block_ + size) [[unlikely]]
            flush();
        return at_;
    }
    void commit(char* end) noexcept { at_ = end; }

    [[gnu::always_inline]] void put(char byte) {
        auto* const at = claim();
        *at = byte;
        commit(at + 1);
    }

    void put(std::string_view bytes) {
        if (bytes.size() > static_cast<std::size_t>(block_ + sizeof block_ - at_)) {
            flush();
            if (bytes.size() > sizeof block_) {
                text_.append(bytes);
                return;
            }
        }
        std::memcpy(at_, bytes.data(), bytes.size());
        at_ += bytes.size();
    }

    /// Appends the base64 of `bytes`.
    void putEncoded(std::span<unsigned char const> bytes) {
        constexpr std::size_t piece = size / 4 * 3; // so that only the last piece has padding
        while (!bytes.empty()) {
            auto const part = bytes.first(std::min(bytes.size(), piece));
            flush();
            at_ = Base64::encode(part.data(), part.size(), block_);
            bytes = bytes.subspan(part.size());
        }
    }

    void putSpaces(std::size_t count) {
        for (; count > 0; --count)
            put(' ');
    }

    /// Reserves memory for `bytes` more, so that a large text is not copied while it grows.
    void expect(std::size_t bytes) {
        if (bytes <= sizeof block_)
            return;
        flush();
        if (auto const needed = text_.size() + bytes; needed > text_.capacity())
            text_.reserve(std::max(needed, text_.capacity() * 2));
    }

    void flush() {
        text_.append(block_, static_cast<std::size_t>(at_ - block_));
        at_ = block_;
    }

private:
    static constexpr std::size_t size = 4096;

    std::string& text_;
    char block_[size + mostClaimed];
    char* at_ = block_;
};

/// The containers around the current value, innermost first, for error texts.
struct Level {
    Level const* outer;
    std::size_t depth;
    bool isObject;
    Element const* key; ///< key of the current child of an object
    std::size_t index;  ///< index of the current child of an array
};

std::string pathOf(Level const* level) {
    std::vector<Level const*> levels;
    for (; level != nullptr; level = level->outer)
        levels.push_back(level);
    std::string path;
    for (auto at = levels.rbegin(); at != levels.rend(); ++at) {
        if ((*at)->isObject)
            path.append(path.empty() ? "" : ".").append((*at)->key->text());
        else
            path.append("[").append(std::to_string((*at)->index)).append("]");
    }
    // A NUL would end the error text.
    std::replace_if(
        path.begin(), path.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, '?');
    return path;
}

class Writer {
public:
    Writer(std::string& text, bool compact) : out_(text), compact_(compact) {}

    void write(Element const& root) {
        value(root, nullptr);
        out_.flush();
    }

private:
    void value(Element const& element, Level const* level) {
        switch (element.kind()) {
        case Kind::null:
            out_.put("null");
            break;
        case Kind::boolean:
            out_.put(element.boolean() ? "true" : "false");
            break;
        case Kind::signedNumber:
            integer(element.signedNumber());
            break;
        case Kind::unsignedNumber:
            integer(element.unsignedNumber());
            break;
        case Kind::floatingNumber:
            floating(element.floatingNumber());
            break;
        case Kind::string:
            string(element, level, false);
            break;
        case Kind::array:
            array(element.array(), level);
            break;
        case Kind::object:
            object(element.object(), level);
            break;
        }
    }

    template <class T>
    [[gnu::flatten]] void integer(T number) {
        constexpr std::size_t most = 20;
        auto* const at = out_.claim();
        out_.commit(std::to_chars(at, at + most, number).ptr);
    }

    void floating(double number) {
        if (!std::isfinite(number)) {
            out_.put(std::isnan(number) ? "\"NaN\""
                     : number > 0       ? "\"Infinity\""
                                        : "\"-Infinity\"");
            return;
        }
        constexpr std::size_t most = 24; // -2.2250738585072014e-308
        auto* const at = out_.claim();
        auto* end = std::to_chars(at, at + most, number).ptr;
        // Without a point or exponent the text would be read as an integer.
        if (std::none_of(at, end, [](char c) { return c == '.' || c == 'e'; })) {
            *end++ = '.';
            *end++ = '0';
        }
        out_.commit(end);
    }

    [[gnu::always_inline]] void string(Element const& element, Level const* level, bool isKey) {
        auto const* const bytes = Access::shortText(element);
        auto const size = Access::shortTextSize(element);
        if (bytes == nullptr || !Tolv::Detail::isPlainAscii(bytes, size)) {
            if (Access::isLongText(element) && Access::longText(element)->isPlain)
                plainString(*Access::longText(element));
            else
                longString(element.text(), level, isKey);
            return;
        }
        auto* const at = out_.claim();
        *at = '"';
        std::memcpy(at + 1, bytes, 16); // the closing quote and later output overwrite the excess
        at[1 + size] = '"';
        out_.commit(at + size + 2);
    }

    void plainString(Detail::TextRep& text) {
        out_.expect(text.size + std::size_t{2});
        out_.put('"');
        if (auto const* const bytes = Detail::deferredBytes(text))
            out_.putEncoded(*bytes);
        else
            out_.put(std::string_view(text.chars(), text.size));
        out_.put('"');
    }

    void longString(std::string_view text, Level const* level, bool isKey) {
        // Work in pieces, so that the scanned bytes are still in the cache when they are copied.
        constexpr std::size_t piece = std::size_t{1} << 14U;
        out_.expect(text.size() + 2);
        out_.put('"');
        auto checked = false;
        for (auto rest = text; !rest.empty();) {
            auto const part = rest.substr(0, piece);
            auto beyondAscii = false;
            auto const* const end =
                Tolv::Detail::endOfRun(part.data(), part.data() + part.size(), beyondAscii);
            if (beyondAscii && !checked) {
                checkUtf8(text, level, isKey);
                checked = true;
            }
            auto const run = static_cast<std::size_t>(end - part.data());
            out_.put(part.substr(0, run));
            rest.remove_prefix(run);
            if (run != part.size()) {
                escape(rest.front());
                rest.remove_prefix(1);
            }
        }
        out_.put('"');
    }

    void escape(char byte) {
        switch (byte) {
        case '"':
            out_.put("\\\"");
            break;
        case '\\':
            out_.put("\\\\");
            break;
        case '\b':
            out_.put("\\b");
            break;
        case '\f':
            out_.put("\\f");
            break;
        case '\n':
            out_.put("\\n");
            break;
        case '\r':
            out_.put("\\r");
            break;
        case '\t':
            out_.put("\\t");
            break;
        default:
            out_.put(byte < 0x10 ? "\\u000" : "\\u001");
            out_.put("0123456789ABCDEF"[byte & 0x0F]);
        }
    }

    static void checkUtf8(std::string_view text, Level const* level, bool isKey) {
        auto const invalid = findInvalidUtf8(text);
        if (invalid == std::string_view::npos)
            return;
        auto const path = pathOf(isKey ? level->outer : level);
        auto const where = path.empty() ? std::string("the tree") : path;
        throw Exception::InvalidParameter((isKey ? "a key in " + where : where) +
                                          " is not valid UTF-8 at byte " + std::to_string(invalid) +
                                          (isKey ? " of the key" : " of the string"));
    }

    void array(Array const& array, Level const* outer) {
        auto level = enter(outer, false);
        out_.put('[');
        for (auto const& element : array) {
            separate(level);
            value(element, &level);
            ++level.index;
        }
        leave(level, ']');
    }

    void object(Object const& object, Level const* outer) {
        auto level = enter(outer, true);
        out_.put('{');
        for (auto const& member : object)
            this->member(member, level);
        leave(level, '}');
    }

    void member(Detail::Member const& member, Level& level) {
        separate(level);
        level.key = &member.key_;
        string(member.key_, &level, true);
        auto* const at = out_.claim();
        at[0] = ':';
        at[1] = ' ';
        out_.commit(at + (compact_ ? 1 : 2));
        value(member.value, &level);
        ++level.index;
    }

    /// Limits the recursion, so that no tree exhausts the stack.
    static Level enter(Level const* outer, bool isObject) {
        Level const level{outer, outer != nullptr ? outer->depth + 1 : 1, isObject, nullptr, 0};
        constexpr auto most = Limits{}.depth;
        if (level.depth > most)
            throw Exception::InvalidParameter("the tree has more than " + std::to_string(most) +
                                              " nested arrays and objects");
        return level;
    }

    void separate(Level const& level) {
        if (level.index != 0)
            out_.put(',');
        if (!compact_)
            newLine(level.depth);
    }

    void leave(Level const& level, char bracket) {
        if (!compact_ && level.index != 0)
            newLine(level.depth - 1);
        out_.put(bracket);
    }

    void newLine(std::size_t depth) {
        out_.put('\n');
        out_.putSpaces(depth * 2);
    }

    Output out_;
    bool compact_;
};

} // namespace

void WriterJson::Write(Element const& element, std::string& text, bool compact) {
    text.clear();
    Writer(text, compact).write(element);
}

void WriterJson::Write(Element const& element, std::ostream& stream, bool compact) {
    std::string text;
    Write(element, text, compact);
    stream.write(text.data(), static_cast<std::streamsize>(text.size()));
}

} // namespace Tolv::MetaData
