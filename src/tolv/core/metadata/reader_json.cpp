#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <istream>
#include <limits>
#include <memory>
#include <new>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include <tolv/core/detail/text_run.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/passing_tree.h>
#include <tolv/core/metadata/detail/tree.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/utf8.h>

namespace Tolv::MetaData {

using Detail::Access;

namespace {

/// A stack of keys and values that are not in a container yet. The values of most messages fit into
/// the internal buffer. Deliberately nothing outlives a call: the memory for a huge text is
/// released, and thread-local objects would prevent the library from being unloaded.
class ValueStack {
public:
    /// @param ownsValues false if the elements are not to be destroyed
    explicit ValueStack(bool ownsValues) noexcept : ownsValues_(ownsValues) {}
    ValueStack(ValueStack const&) = delete;
    ValueStack& operator=(ValueStack const&) = delete;
    ~ValueStack() {
        if (ownsValues_)
            std::destroy(items_, top_);
        if (items_ != own())
            ::operator delete(items_);
    }

    [[nodiscard]] Element* begin() noexcept { return items_; }
    /// The end of the allocated memory.
    [[nodiscard]] Element* end() noexcept { return end_; }
    /// Records that there are elements up to `top`, so that they are destroyed if something throws.
    /// The parser itself keeps the count in a register.
    void setTop(Element* top) noexcept { top_ = top; }

    /// Allocates more memory; the elements move.
    void grow() {
        auto const size = top_ - items_;
        auto const capacity = 2 * static_cast<std::size_t>(end_ - items_);
        auto* const grown = static_cast<Element*>(::operator new(capacity * sizeof(Element)));
        std::uninitialized_move(items_, top_, grown); // leaves null elements: nothing to destroy
        if (items_ != own())
            ::operator delete(items_);
        items_ = grown;
        top_ = grown + size;
        end_ = grown + capacity;
    }

private:
    static constexpr std::size_t inside = 128;

    Element* own() noexcept { return reinterpret_cast<Element*>(room_); }

    alignas(Element) std::byte room_[inside * sizeof(Element)];
    Element* items_ = own();
    Element* top_ = items_;
    Element* end_ = items_ + inside;
    bool ownsValues_;
};

constexpr bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr bool isSpace(char c) noexcept { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

/// A key in quotes for an error text, cut at 60 bytes. It is escaped, since a NUL would end the
/// text.
std::string quoted(std::string_view key) {
    auto shown = key.substr(0, 60);
    shown = shown.substr(0, findInvalidUtf8(shown)); // the cut may be within a character
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
/// which was parsed without error.
std::size_t offsetOfKey(std::string_view text, std::size_t place) {
    std::vector<std::size_t> keys;    // offsets of the keys of all open objects
    std::vector<std::size_t> objects; // size of `keys` at the start of each open object
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

/// Parses one text. Not recursive: open containers are kept on the value stack, so that depth costs
/// no thread stack.
///
/// The elements of an open container follow a mark: a number that encodes the position of the
/// enclosing container's mark, and whether that container is an object.
class Parser {
public:
    /// @param owner of the text if long strings shall refer to it, otherwise null
    /// @param arena for the nodes of a `PassingTree`, otherwise null
    Parser(std::string_view text, Limits const& limits,
           std::shared_ptr<std::string const> const* owner, Tolv::Detail::Arena* arena)
        // Pointer arithmetic requires a valid pointer even for an empty text.
        : begin_(text.empty() ? "" : text.data()), end_(begin_ + text.size()), limits_(limits),
          owner_(owner), arena_(arena),
          // The tree uses 32-bit counts.
          mostElements_(std::min<std::size_t>(limits.elements, 4'294'967'294)),
          stack_(arena == nullptr) {}

    void parse(Element& result) {
        if (static_cast<std::size_t>(end_ - begin_) > limits_.textBytes)
            refuse("text of more than " + std::to_string(limits_.textBytes) + " bytes",
                   begin_ + limits_.textBytes);
        skipSpace();
        if (at_ == end_)
            refuse("no value", at_);
        parseValue();
        skipSpace();
        if (at_ != end_)
            refuse("trailing text after the value", at_);
        result.swap(*stack_.begin());
    }

private:
    /// The smallest text, in bytes, that is worth an allocation with two reference counts.
    static constexpr std::size_t leastBorrowed = 4096;

    // ---- Structure ---------------------------------------------------------------------------

    /// The byte at `at`; at the end a NUL, which is never valid in JSON.
    [[nodiscard]] char peek(char const* at) const noexcept { return at != end_ ? *at : '\0'; }
    [[nodiscard]] char peek() const noexcept { return peek(at_); }

    /// Moves `at` past white space. @return the byte there, as `peek`
    char skipSpace(char const*& at) const noexcept {
        auto const byte = peek(at);
        if (static_cast<unsigned char>(byte) > ' ' || at == end_) [[likely]]
            return byte;
        while (at != end_ && isSpace(*at))
            ++at;
        return peek(at);
    }
    void skipSpace() noexcept { skipSpace(at_); }

    /// Parses the value that starts here into the bottom of the stack.
    ///
    /// The position in the text, the top of the stack and the innermost open container are local
    /// variables; as members they would be stored and reloaded for each byte that is written.
    /// `tell` stores the first two before anything that may throw.
    void parseValue() {
        auto const* at = at_;
        auto* top = stack_.begin();
        auto* mark = top; // of the innermost open container
        std::size_t depth = 0;
        auto inObject = false;
        auto first = peek(at); // first byte of the next key or value
        auto const tell = [&](char const* place) {
            at_ = place;
            stack_.setTop(top);
        };
        auto const push = [&]() -> Element& {
            if (top == stack_.end()) [[unlikely]] {
                auto const open = mark - stack_.begin();
                auto const size = top - stack_.begin();
                stack_.setTop(top);
                stack_.grow();
                mark = stack_.begin() + open;
                top = stack_.begin() + size;
            }
            return *new (top++) Element;
        };
        auto const readString = [&] {
            auto& element = push();
            if (auto const* const behind = readShortString(at + 1, element)) [[likely]] {
                at = behind;
            } else {
                tell(at + 1);
                readLongString(element);
                at = at_;
            }
        };

        for (;;) {
            if (inObject) {
                if (first != '"') [[unlikely]] {
                    tell(at);
                    refuseByte();
                }
                auto const* const start = at;
                readString();
                // A key is at most as long as its source text, so check that first.
                if (static_cast<std::size_t>(at - start) > limits_.keyBytes) [[unlikely]] {
                    tell(at);
                    checkKey(top[-1], start);
                }
                if (skipSpace(at) != ':') [[unlikely]] {
                    tell(at);
                    refuseByte();
                }
                first = skipSpace(++at);
            }

            if (first == '"') {
                readString();
            } else if (first == '{' || first == '[') {
                auto const isObject = first == '{';
                if (depth == limits_.depth) {
                    tell(at);
                    refuseDepth();
                }
                first = skipSpace(++at);
                auto& element = push();
                if (first != (isObject ? '}' : ']')) {
                    element.setUnsigned(static_cast<std::uint64_t>(mark - stack_.begin()) << 1U |
                                        (inObject ? 1U : 0U));
                    mark = &element;
                    inObject = isObject;
                    ++depth;
                    continue;
                }
                ++at;
                element = isObject ? Element(Object()) : Element(Array());
            } else {
                auto& element = push();
                tell(at);
                readScalar(first, element);
                at = at_;
            }

            for (;;) {
                if (depth == 0) {
                    tell(at);
                    return;
                }
                auto const behind = skipSpace(at);
                if (behind == ',') {
                    if (static_cast<std::size_t>(top - mark - 1) >> (inObject ? 1U : 0U) >=
                        mostElements_) [[unlikely]] {
                        tell(at);
                        refuse("more than " + std::to_string(mostElements_) + " elements", at);
                    }
                    first = skipSpace(++at);
                    break;
                }
                tell(at);
                if (behind != (inObject ? '}' : ']')) [[unlikely]]
                    refuseByte();
                auto const around = mark->unsignedNumber();
                close(*mark, {mark + 1, top}, inObject);
                top = mark + 1;
                mark = stack_.begin() + (around >> 1U);
                inObject = (around & 1U) != 0;
                --depth;
                ++at;
            }
        }
    }

    /// Makes `place`, which must be plain, a container of the elements after it, and pops them off
    /// the stack.
    void close(Element& place, std::span<Element> elements, bool isObject) {
        if (!isObject) {
            Access::takeArray(place, elements, arena_);
            stack_.setTop(elements.data());
            return;
        }
        Access::takeObject(place, elements, arena_);
        stack_.setTop(elements.data());
        auto const duplicate = Access::indexObject(place, arena_);
        if (duplicate >= 0) [[unlikely]]
            refuseDuplicate(place.object(), static_cast<std::size_t>(duplicate));
    }

    void checkKey(Element const& key, char const* start) const {
        if (key.text().size() > limits_.keyBytes)
            refuse("key of more than " + std::to_string(limits_.keyBytes) + " bytes", start);
    }

    /// Parses a number, a boolean or null that starts here with `first`.
    void readScalar(char first, Element& element) {
        switch (first) {
        case 't':
            readWord("true");
            element.setBoolean(true);
            break;
        case 'f':
            readWord("false");
            element.setBoolean(false);
            break;
        case 'n':
            readWord("null");
            break;
        default:
            readNumber(element);
        }
    }

    void readWord(std::string_view word) {
        auto const left = std::string_view(at_, static_cast<std::size_t>(end_ - at_));
        if (!left.starts_with(word)) {
            // For a truncated word report the end of the text; for any other, its start.
            if (word.starts_with(left))
                at_ = end_;
            refuseByte();
        }
        at_ += word.size();
    }

    // ---- Numbers -----------------------------------------------------------------------------

    // From here on the position is kept in a local variable while it moves: `at_` would be stored
    // and reloaded for each byte, since bytes may alias anything.

    /// The end of the digits from `at` on, of which there must be at least one.
    char const* skipDigits(char const* at) {
        if (at == end_ || !isDigit(*at)) {
            at_ = at;
            refuseByte();
        }
        if constexpr (wholeWords)
            while (end_ - at >= 8 && areDigits(loadWord(at)))
                at += 8;
        while (at != end_ && isDigit(*at))
            ++at;
        return at;
    }

    // Eight digits at a time if they fit into a register.
    static constexpr bool wholeWords =
        sizeof(std::size_t) == 8 && std::endian::native == std::endian::little;

    static std::uint64_t loadWord(char const* at) noexcept {
        std::uint64_t word = 0;
        std::memcpy(&word, at, sizeof word);
        return word;
    }
    static bool areDigits(std::uint64_t word) noexcept {
        constexpr auto ones = ~std::uint64_t{0} / 0xFF;
        return ((word & ones * 0xF0) | ((word + ones * 0x06) & ones * 0xF0) >> 4U) == ones * 0x33;
    }
    /// The value of eight digits, combined in place to pairs, then to fours, then to all.
    static std::uint64_t valueOfDigits(std::uint64_t word) noexcept {
        word = (word & 0x0F0F0F0F0F0F0F0FULL) * (10 * (1ULL << 8U) + 1) >> 8U;
        word = (word & 0x00FF00FF00FF00FFULL) * (100 * (1ULL << 16U) + 1) >> 16U;
        return (word & 0x0000FFFF0000FFFFULL) * (10000 * (1ULL << 32U) + 1) >> 32U;
    }

    void readNumber(Element& element) {
        auto const* const start = at_;
        auto const negative = peek() == '-';
        auto const* const digits = start + (negative ? 1 : 0);
        auto const* at = digits;
        std::uint64_t value = 0;
        if (at != end_ && *at == '0') {
            ++at;
        } else {
            if constexpr (wholeWords) {
                for (; end_ - at >= 8; at += 8) {
                    auto const word = loadWord(at);
                    if (!areDigits(word))
                        break;
                    value = value * 100'000'000 + valueOfDigits(word);
                }
            }
            for (; at != end_ && isDigit(*at); ++at)
                value = value * 10 + static_cast<unsigned char>(*at - '0');
            if (at == digits) {
                at_ = at;
                refuseByte();
            }
        }
        auto const count = at - digits;
        auto whole = true;
        if (at != end_ && *at == '.') {
            whole = false;
            at = skipDigits(at + 1);
        }
        if (at != end_ && (*at | 0x20) == 'e') {
            whole = false;
            ++at;
            if (at != end_ && (*at == '+' || *at == '-'))
                ++at;
            at = skipDigits(at);
        }
        at_ = at;
        if (whole && count > 18) // `value` may have overflowed
            whole = std::from_chars(digits, at_, value).ec == std::errc();
        constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        if (!whole || (negative && (value == 0 || value > most + 1)))
            element.setFloating(floating(start));
        else if (negative)
            element.setSigned(static_cast<std::int64_t>(~value + 1));
        else if (value <= most)
            element.setSigned(static_cast<std::int64_t>(value));
        else
            element.setUnsigned(value);
    }

    /// The number from `start` to here as a double.
    [[nodiscard]] double floating(char const* start) const {
        double value = 0;
        if (std::from_chars(start, at_, value).ec != std::errc()) { // overflow or underflow
            if (!isSmall(start))
                refuse("number out of range for a double", start);
            value = *start == '-' ? -0.0 : 0.0;
        }
        return value;
    }

    /// Whether a nonzero number that does not fit into a double is below 1.
    [[nodiscard]] bool isSmall(char const* start) const noexcept {
        // The position of the decimal point relative to the first nonzero digit.
        std::int64_t place = 0;
        auto pointSeen = false;
        auto digitSeen = false;
        auto const* at = start + (*start == '-' ? 1 : 0);
        for (; at != at_ && *at != 'e' && *at != 'E'; ++at) {
            if (*at == '.')
                pointSeen = true;
            else if (digitSeen || *at != '0') {
                digitSeen = true;
                place += pointSeen ? 0 : 1;
            } else if (pointSeen)
                --place;
        }
        if (at == at_)
            return place <= 0;
        ++at;
        auto const negative = *at == '-';
        if (negative || *at == '+')
            ++at;
        std::int64_t exponent = 0;
        if (std::from_chars(at, at_, exponent).ec != std::errc())
            return negative; // the exponent outweighs any number of digits
        return negative ? place <= exponent : place <= -exponent; // a sum may overflow
    }

    // ---- Strings -----------------------------------------------------------------------------

    /// Reads a string of up to 14 bytes of ASCII into `element`, which must be null.
    /// @param at after the opening quote
    /// @return the end of the string, or null if it is something else or too close to the end
    char const* readShortString(char const* at, Element& element) const noexcept {
        if (end_ - at < 16) [[unlikely]]
            return nullptr;
        auto const size = Tolv::Detail::plainRun16(at);
        if (size > Detail::inlineTextCapacity || at[size] != '"')
            return nullptr;
        Access::putShortText(element, at, size);
        return at + size + 1;
    }

    /// Reads any other string; its opening quote has been read.
    void readLongString(Element& element) {
        auto const* const start = at_;
        auto const ascii = skipRun();
        if (at_ != end_ && *at_ == '"') [[likely]] {
            putText(element, {start, static_cast<std::size_t>(at_ - start)}, ascii);
            ++at_;
        } else {
            readEscaped(element, start);
        }
    }

    /// Makes `element` a text that appears verbatim in the input.
    void putText(Element& element, std::string_view text, bool ascii) {
        if (text.size() <= Detail::inlineTextCapacity) {
            if (end_ - text.data() >= 16)
                Access::putShortText(element, text.data(), text.size());
            else
                element.setString(text);
        } else if (arena_ != nullptr) {
            Access::putPassingText(element, text, ascii, *arena_);
        } else if (owner_ != nullptr && text.size() >= leastBorrowed) {
            Access::putBorrowedText(element, text, ascii, *owner_);
        } else if (ascii) {
            Access::putPlainText(element, text);
        } else {
            element.setString(text);
        }
    }

    /// Skips to the next byte that needs an escape. @return whether all skipped bytes are ASCII
    bool skipRun() {
        auto beyondAscii = false;
        auto const* const start = at_;
        at_ = Tolv::Detail::endOfRun(start, end_, beyondAscii);
        if (beyondAscii) {
            std::string_view const run(start, static_cast<std::size_t>(at_ - start));
            if (auto const invalid = findInvalidUtf8(run); invalid != std::string_view::npos)
                refuse("invalid UTF-8", start + invalid);
        }
        return !beyondAscii;
    }

    void readEscaped(Element& element, char const* start) {
        text_.clear();
        for (;;) {
            text_.append(start, at_);
            if (peek() != '\\' && peek() != '"')
                refuseByte();
            if (*at_++ == '"')
                break;
            readEscape();
            start = at_;
            skipRun();
        }
        if (arena_ != nullptr && text_.size() > Detail::inlineTextCapacity) {
            auto* const kept = static_cast<char*>(arena_->take(text_.size()));
            std::memcpy(kept, text_.data(), text_.size());
            Access::putPassingText(element, {kept, text_.size()}, false, *arena_);
        } else {
            element.setString(text_);
        }
    }

    void readEscape() {
        constexpr std::string_view names = "\"\\/bfnrt";
        constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
        if (peek() == 'u') {
            readUnicode();
            return;
        }
        auto const place = at_ != end_ ? names.find(*at_) : std::string_view::npos;
        if (place == std::string_view::npos)
            refuseByte();
        text_ += meanings[place];
        ++at_;
    }

    /// Reads a Unicode escape, starting at its "u".
    void readUnicode() {
        auto const* const start = at_;
        auto code = readHex();
        if (code >= 0xDC00 && code < 0xE000)
            refuse("unpaired surrogate", start);
        if (code >= 0xD800 && code < 0xDC00) {
            for (auto const expected : {'\\', 'u'}) {
                if (at_ == end_)
                    refuseByte();
                if (*at_ != expected)
                    refuse("unpaired surrogate", at_);
                ++at_;
            }
            auto const* const digits = at_--;
            auto const low = readHex();
            if (low < 0xDC00 || low >= 0xE000)
                refuse("unpaired surrogate", digits);
            code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
        }
        appendUtf8(code);
    }

    /// Reads the "u" and the four hexadecimal digits after it.
    std::uint32_t readHex() {
        std::uint32_t code = 0;
        ++at_;
        for (int i = 0; i < 4; ++i, ++at_) {
            auto const byte = peek();
            auto const letter = static_cast<char>(byte | 0x20);
            if (isDigit(byte))
                code = code << 4U | static_cast<std::uint32_t>(byte - '0');
            else if (letter >= 'a' && letter <= 'f')
                code = code << 4U | static_cast<std::uint32_t>(letter - 'a' + 10);
            else
                refuse("expected four hexadecimal digits", at_);
        }
        return code;
    }

    void appendUtf8(std::uint32_t code) {
        auto const put = [this](std::uint32_t byte) { text_ += static_cast<char>(byte); };
        if (code < 0x80) {
            put(code);
        } else if (code < 0x800) {
            put(0xC0 | code >> 6U);
            put(0x80 | (code & 0x3FU));
        } else if (code < 0x10000) {
            put(0xE0 | code >> 12U);
            put(0x80 | (code >> 6U & 0x3FU));
            put(0x80 | (code & 0x3FU));
        } else {
            put(0xF0 | code >> 18U);
            put(0x80 | (code >> 12U & 0x3FU));
            put(0x80 | (code >> 6U & 0x3FU));
            put(0x80 | (code & 0x3FU));
        }
    }

    // ---- Refusals ----------------------------------------------------------------------------

    [[noreturn, gnu::cold]] void refuse(std::string const& what, char const* where) const {
        throw Exception::InvalidParameter("JSON text refused: " + what + " at byte " +
                                          std::to_string(where - begin_));
    }

    /// Refuses the byte here.
    [[noreturn, gnu::cold]] void refuseByte() const {
        std::string_view const text(begin_, static_cast<std::size_t>(end_ - begin_));
        if (at_ == end_)
            refuse("unexpected end", at_);
        if (text.starts_with("\xEF\xBB\xBF") && at_ == begin_)
            refuse("byte order mark", at_);
        refuse(describeByte(*at_), at_);
    }

    [[noreturn, gnu::cold]] void refuseDepth() const {
        refuse("more than " + std::to_string(limits_.depth) + " nested arrays and objects", at_);
    }

    [[noreturn, gnu::cold]] void refuseDuplicate(Object const& object, std::size_t place) const {
        auto member = object.begin();
        for (std::size_t i = 0; i < place; ++i)
            ++member;
        std::string_view const accepted(begin_, static_cast<std::size_t>(at_ - begin_));
        refuse("duplicate key " + quoted(member->key()) + " in an object",
               begin_ + offsetOfKey(accepted, place));
    }

    char const* begin_;
    char const* end_;
    char const* at_ = begin_;
    Limits const& limits_;
    std::shared_ptr<std::string const> const* owner_;
    Tolv::Detail::Arena* arena_;
    std::size_t mostElements_;
    ValueStack stack_;
    std::string text_; ///< unescaped text of the current string
};

/// The rest of `stream`; reading stops once it exceeds `most` bytes, since a stream may be endless.
std::string readAll(std::istream& stream, std::size_t most) {
    std::istream::sentry const ready(stream, true);
    if (!ready)
        throw Exception::InvalidParameter("JSON text refused: the stream cannot be read");
    constexpr std::size_t least = std::size_t{1} << 16U;
    std::string text;
    std::size_t used = 0;
    auto* const buffer = stream.rdbuf();
    for (;;) {
        if (used == text.size()) {
            if (used > most)
                break;
            // The bytes in the buffer are available; beyond them, growing by half keeps this
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
        if (count <= 0) {
            stream.setstate(std::ios_base::eofbit);
            break;
        }
        used += static_cast<std::size_t>(count);
    }
    text.resize(used);
    return text;
}

} // namespace

void ReaderJson::Read(Element& element, std::string_view text, Limits const& limits) {
    Parser(text, limits, nullptr, nullptr).parse(element);
}

void ReaderJson::Read(Element& element, std::shared_ptr<std::string const> const& text,
                      Limits const& limits) {
    if (text == nullptr)
        throw Exception::InvalidParameter("JSON text refused: the pointer to the text is null");
    auto const owner = text; // `element` may hold the only other reference
    Parser(*owner, limits, &owner, nullptr).parse(element);
}

void ReaderJson::Read(Element& element, std::istream& stream, Limits const& limits) {
    Read(element, readAll(stream, limits.textBytes), limits);
}

Detail::PassingTree::PassingTree(std::string_view text, Limits const& limits)
    : arena_(text.size() * 3) { // enough for messages with many records
    Parser(text, limits, nullptr, &arena_).parse(root_);
}

Detail::PassingTree::~PassingTree() { Access::forget(root_); }

} // namespace Tolv::MetaData
