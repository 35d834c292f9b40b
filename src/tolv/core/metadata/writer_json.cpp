#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/tree_internal.h>
#include <tolv/core/utf8.h>

namespace Tolv::MetaData {

namespace {

/// Where the text grows. Small pieces are collected in a block that stays in the cache and are
/// appended together: a std::string cannot grow without being filled with zeros first, except by
/// appending.
class Output {
public:
    explicit Output(std::string& text) : text_(text) {}
    Output(Output const&) = delete;
    Output& operator=(Output const&) = delete;

    void put(char byte) {
        if (at_ == end())
            flush();
        *at_++ = byte;
    }

    void put(std::string_view bytes) {
        if (bytes.size() > static_cast<std::size_t>(end() - at_)) {
            flush();
            if (bytes.size() > sizeof block_) {
                text_.append(bytes);
                return;
            }
        }
        std::memcpy(at_, bytes.data(), bytes.size());
        at_ += bytes.size();
    }

    void putSpaces(std::size_t count) {
        for (; count > 0; --count)
            put(' ');
    }

    /// Room for `count` bytes, no more than the block has; `commit` tells where they ended.
    char* claim(std::size_t count) {
        if (static_cast<std::size_t>(end() - at_) < count)
            flush();
        return at_;
    }
    void commit(char* end) noexcept { at_ = end; }

    /// Announces `bytes` more, so that a large text is not copied while it grows.
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
    [[nodiscard]] char* end() noexcept { return block_ + sizeof block_; }

    std::string& text_;
    char block_[4096];
    char* at_ = block_;
};

constexpr bool mustEscape(char byte) noexcept {
    return static_cast<unsigned char>(byte) < 0x20 || byte == '"' || byte == '\\';
}

/// Length of the run at the start of `text` that may be written as it is. With `ascii`, the run
/// ends at the first byte that is not ASCII, too.
template <bool ascii>
std::size_t plainRun(std::string_view text) noexcept {
    std::size_t run = 0;
#if defined(__SSE2__)
    auto const quote = _mm_set1_epi8('"');
    auto const backslash = _mm_set1_epi8('\\');
    auto const lastControl = _mm_set1_epi8(0x1F);
    auto const space = _mm_set1_epi8(0x20);
    for (; text.size() - run >= 16; run += 16) {
        auto const bytes = _mm_loadu_si128(reinterpret_cast<__m128i const*>(text.data() + run));
        // Compared as signed bytes, those beyond ASCII are below the space, too.
        auto const low = ascii ? _mm_cmplt_epi8(bytes, space)
                               : _mm_cmpeq_epi8(_mm_min_epu8(bytes, lastControl), bytes);
        auto const found = _mm_or_si128(
            low, _mm_or_si128(_mm_cmpeq_epi8(bytes, quote), _mm_cmpeq_epi8(bytes, backslash)));
        if (auto const mask = static_cast<unsigned int>(_mm_movemask_epi8(found)); mask != 0)
            return run + static_cast<std::size_t>(std::countr_zero(mask));
    }
#endif
    while (run < text.size() && !mustEscape(text[run]) &&
           (!ascii || static_cast<unsigned char>(text[run]) < 0x80))
        ++run;
    return run;
}

/// The containers around the current value, innermost first, for messages.
struct Level {
    Level const* outer;
    std::size_t depth;
    bool isObject;
    std::string_view key; ///< of the current child of an object
    std::size_t index;    ///< of the current child of an array
};

std::string pathOf(Level const* level) {
    std::vector<Level const*> levels;
    for (; level != nullptr; level = level->outer)
        levels.push_back(level);
    std::string path;
    for (auto at = levels.rbegin(); at != levels.rend(); ++at) {
        if ((*at)->isObject)
            path.append(path.empty() ? "" : ".").append((*at)->key);
        else
            path.append("[").append(std::to_string((*at)->index)).append("]");
    }
    // A NUL would end the message.
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
            string(element.text(), level, false);
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
    void integer(T number) {
        constexpr std::size_t most = 20;
        auto* const at = out_.claim(most);
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
        auto* const at = out_.claim(most + 2);
        auto* end = std::to_chars(at, at + most, number).ptr;
        // A text like that of an integer would be read as one.
        if (std::none_of(at, end, [](char c) { return c == '.' || c == 'e'; })) {
            *end++ = '.';
            *end++ = '0';
        }
        out_.commit(end);
    }

    void string(std::string_view text, Level const* level, bool isKey) {
        // Piece by piece, so that what is searched is still in the cache when it is copied.
        constexpr std::size_t piece = std::size_t{1} << 14U;
        out_.expect(text.size() + 2);
        out_.put('"');
        auto checked = false;
        auto rest = text;
        while (!rest.empty()) {
            auto const part = rest.substr(0, piece);
            auto const run = checked ? plainRun<false>(part) : plainRun<true>(part);
            out_.put(part.substr(0, run));
            rest.remove_prefix(run);
            if (run == part.size())
                continue;
            if (mustEscape(rest.front())) {
                escape(rest.front());
                rest.remove_prefix(1);
            } else {
                checkUtf8(text, level, isKey);
                checked = true;
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
        for (auto const& member : object) {
            separate(level);
            level.key = member.key();
            string(level.key, &level, true);
            if (compact_)
                out_.put(':');
            else
                out_.put(": ");
            value(member.value, &level);
            ++level.index;
        }
        leave(level, '}');
    }

    /// The recursion ends here, so that no tree exhausts the stack.
    static Level enter(Level const* outer, bool isObject) {
        Level const level{outer, outer != nullptr ? outer->depth + 1 : 1, isObject, {}, 0};
        constexpr auto most = Limits{}.depth;
        if (level.depth > most)
            throw Exception::InvalidParameter("the tree is deeper than " + std::to_string(most) +
                                              " arrays and objects");
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
