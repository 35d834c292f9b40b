#include <algorithm>
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

#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/core/metadata/tree_internal.h>
#include <tolv/core/text_run_internal.h>
#include <tolv/core/utf8.h>

namespace Tolv::MetaData {

using Detail::Access;

namespace {

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
        if (size_ == capacity_) [[unlikely]]
            grow();
        return *new (items_ + size_++) Element;
    }

    [[nodiscard]] std::size_t size() const noexcept { return size_; }
    [[nodiscard]] Element& operator[](std::size_t index) noexcept { return items_[index]; }
    [[nodiscard]] std::span<Element> from(std::size_t index) noexcept {
        return {items_ + index, items_ + size_};
    }

    /// Forgets the elements from `index` on, which somebody else owns by now.
    void forgetFrom(std::size_t index) noexcept { size_ = index; }

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

constexpr bool isDigit(char c) noexcept { return c >= '0' && c <= '9'; }
constexpr bool isSpace(char c) noexcept { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

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
/// which was accepted so far.
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

/// Reads one text. Without recursion: what is open is kept on the stack of values, so that depth
/// costs no stack of the thread.
///
/// The elements of an open container stand behind a mark, which is a number: where the mark of the
/// container around it stands, and whether this one is an object.
class Parser {
public:
    /// @param owner of the text, if long texts shall refer to it; else null
    Parser(std::string_view text, Limits const& limits,
           std::shared_ptr<std::string const> const* owner)
        // Pointers are computed with even where there is no byte.
        : begin_(text.empty() ? "" : text.data()), end_(begin_ + text.size()), limits_(limits),
          owner_(owner),
          // The tree counts with 32 bits.
          mostElements_(std::min<std::size_t>(limits.elements, 4'294'967'294)) {}

    void parse(Element& result) {
        if (static_cast<std::size_t>(end_ - begin_) > limits_.textBytes)
            refuse("text of more than " + std::to_string(limits_.textBytes) + " bytes",
                   begin_ + limits_.textBytes);
        skipSpace();
        if (at_ == end_)
            refuse("there is no value", at_);
        for (;;) {
            if (startValue())
                continue; // at the first value of a container
            while (depth_ != 0 && endsContainer()) {
            }
            if (depth_ == 0)
                break;
        }
        skipSpace();
        if (at_ != end_)
            refuse("text behind the value", at_);
        result.swap(stack_[0]);
    }

private:
    /// Bytes from which on a text is worth a block of its own and two counters.
    static constexpr std::size_t leastBorrowed = 4096;

    // ---- Structure ---------------------------------------------------------------------------

    /// The byte to look at; at the end a NUL, which stands nowhere in JSON.
    [[nodiscard]] char peek() const noexcept { return at_ != end_ ? *at_ : '\0'; }

    void skipSpace() noexcept {
        if (at_ == end_ || static_cast<unsigned char>(*at_) > ' ') [[likely]]
            return;
        auto const* at = at_;
        while (at != end_ && isSpace(*at))
            ++at;
        at_ = at;
    }

    /// Reads a scalar or an empty container, or opens a container: true, and its first value is
    /// next.
    bool startValue() {
        switch (peek()) {
        case '"':
            ++at_;
            readString(stack_.push());
            return false;
        case '{':
            return open(true);
        case '[':
            return open(false);
        case 't':
            readWord("true");
            stack_.push().setBoolean(true);
            return false;
        case 'f':
            readWord("false");
            stack_.push().setBoolean(false);
            return false;
        case 'n':
            readWord("null");
            stack_.push();
            return false;
        default:
            readNumber();
            return false;
        }
    }

    bool open(bool isObject) {
        if (depth_ == limits_.depth)
            refuse("depth of more than " + std::to_string(limits_.depth) + " arrays and objects",
                   at_);
        ++at_;
        skipSpace();
        if (peek() == (isObject ? '}' : ']')) {
            ++at_;
            auto& element = stack_.push();
            element = isObject ? Element(Object()) : Element(Array());
            return false;
        }
        ++depth_;
        auto const mark = stack_.size();
        stack_.push().setUnsigned(std::uint64_t{mark_} << 1U | (inObject_ ? 1U : 0U));
        mark_ = mark;
        inObject_ = isObject;
        if (isObject)
            readKey();
        return true;
    }

    /// Behind a value in a container: true when the container ends here, false when another value
    /// is next.
    bool endsContainer() {
        skipSpace();
        auto const byte = peek();
        if (byte == ',') {
            if ((stack_.size() - mark_ - 1) >> (inObject_ ? 1U : 0U) >= mostElements_)
                refuse("more than " + std::to_string(mostElements_) + " elements", at_);
            ++at_;
            skipSpace();
            if (inObject_)
                readKey();
            return false;
        }
        if (byte != (inObject_ ? '}' : ']'))
            refuseByte();
        close();
        ++at_;
        return true;
    }

    void close() {
        auto const elements = stack_.from(mark_ + 1);
        Element container;
        if (inObject_) {
            std::ptrdiff_t duplicate = -1;
            container = Access::takeObject(elements, duplicate);
            if (duplicate >= 0)
                refuseDuplicate(container.object(), static_cast<std::size_t>(duplicate));
        } else {
            container = Access::takeArray(elements);
        }
        stack_.forgetFrom(mark_ + 1);
        auto& place = stack_[mark_];
        auto const around = place.unsignedNumber();
        place.swap(container);
        mark_ = static_cast<std::size_t>(around >> 1U);
        inObject_ = (around & 1U) != 0;
        --depth_;
    }

    void readKey() {
        if (peek() != '"')
            refuseByte();
        auto const* const start = at_++;
        auto& key = stack_.push();
        readString(key);
        if (key.text().size() > limits_.keyBytes)
            refuse("key of more than " + std::to_string(limits_.keyBytes) + " bytes", start);
        skipSpace();
        if (peek() != ':')
            refuseByte();
        ++at_;
        skipSpace();
    }

    void readWord(std::string_view word) {
        auto const left = std::string_view(at_, static_cast<std::size_t>(end_ - at_));
        if (!left.starts_with(word)) {
            // A word that is only cut ends too early; another one is wrong from its start on.
            if (word.starts_with(left))
                at_ = end_;
            refuseByte();
        }
        at_ += word.size();
    }

    // ---- Numbers -----------------------------------------------------------------------------

    // Here and below the place is kept in a local variable while it moves: `at_` would be stored
    // and loaded again for each byte, since bytes may alias anything.

    /// Behind the digits from `at` on, of which there must be one.
    char const* skipDigits(char const* at) {
        if (at == end_ || !isDigit(*at)) {
            at_ = at;
            refuseByte();
        }
        while (at != end_ && isDigit(*at))
            ++at;
        return at;
    }

    void readNumber() {
        auto const* const start = at_;
        auto const negative = peek() == '-';
        auto const* const digits = start + (negative ? 1 : 0);
        auto const* at = digits;
        std::uint64_t value = 0;
        if (at != end_ && *at == '0') {
            ++at;
        } else {
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
        if (whole && count > 18) // `value` may have run over
            whole = std::from_chars(digits, at_, value).ec == std::errc();
        constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
        auto& element = stack_.push();
        if (!whole || (negative && (value == 0 || value > most + 1)))
            element.setFloating(floating(start));
        else if (negative)
            element.setSigned(static_cast<std::int64_t>(~value + 1));
        else if (value <= most)
            element.setSigned(static_cast<std::int64_t>(value));
        else
            element.setUnsigned(value);
    }

    /// The number from `start` to here, as a double.
    [[nodiscard]] double floating(char const* start) const {
        double value = 0;
        if (std::from_chars(start, at_, value).ec != std::errc()) { // out of range, to either side
            if (!isSmall(start))
                refuse("number out of the range of a double", start);
            value = *start == '-' ? -0.0 : 0.0;
        }
        return value;
    }

    /// Whether a number other than 0, beyond what a double can hold, is below 1.
    [[nodiscard]] bool isSmall(char const* start) const noexcept {
        // Where the point stands, counted from the first digit that is not 0.
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
            return negative; // more than a text has digits
        return place + (negative ? -exponent : exponent) <= 0;
    }

    // ---- Strings -----------------------------------------------------------------------------

    /// Reads the string that starts here, behind its quote.
    void readString(Element& element) {
        auto const* const start = at_;
        auto const ascii = skipRun();
        if (at_ != end_ && *at_ == '"') [[likely]] {
            putText(element, {start, static_cast<std::size_t>(at_ - start)}, ascii);
            ++at_;
        } else {
            readEscaped(element, start);
        }
    }

    /// Makes `element` a text that stands in the input as it is.
    void putText(Element& element, std::string_view text, bool ascii) {
        if (text.size() <= Detail::inlineTextCapacity) {
            if (end_ - text.data() >= 16)
                Access::putShortText(element, text.data(), text.size());
            else
                element.setString(text);
        } else if (owner_ != nullptr && text.size() >= leastBorrowed) {
            Access::putBorrowedText(element, text, ascii, *owner_);
        } else if (ascii) {
            Access::putPlainText(element, text);
        } else {
            element.setString(text);
        }
    }

    /// Goes on to the next byte that does not stand for itself. @return whether all was ASCII
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
        element.setString(text_);
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

    /// At the "u" of an escape.
    void readUnicode() {
        auto const* const start = at_;
        auto code = readHex();
        if (code >= 0xDC00 && code < 0xE000)
            refuse("half of a surrogate pair", start);
        if (code >= 0xD800 && code < 0xDC00) {
            for (auto const expected : {'\\', 'u'}) {
                if (at_ == end_)
                    refuseByte();
                if (*at_ != expected)
                    refuse("half of a surrogate pair", at_);
                ++at_;
            }
            auto const* const digits = at_--;
            auto const low = readHex();
            if (low < 0xDC00 || low >= 0xE000)
                refuse("half of a surrogate pair", digits);
            code = 0x10000 + ((code - 0xD800) << 10U) + (low - 0xDC00);
        }
        appendUtf8(code);
    }

    /// Four hexadecimal digits behind the "u" that stands here.
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

    /// The byte here is not what belongs here.
    [[noreturn, gnu::cold]] void refuseByte() const {
        std::string_view const text(begin_, static_cast<std::size_t>(end_ - begin_));
        if (at_ == end_)
            refuse("unexpected end", at_);
        if (text.starts_with("\xEF\xBB\xBF") && at_ == begin_)
            refuse("byte order mark", at_);
        refuse(describeByte(*at_), at_);
    }

    [[noreturn, gnu::cold]] void refuseDuplicate(Object const& object, std::size_t place) const {
        auto member = object.begin();
        for (std::size_t i = 0; i < place; ++i)
            ++member;
        std::string_view const accepted(begin_, static_cast<std::size_t>(at_ - begin_));
        refuse("key " + quoted(member->key()) + " stands twice in one object",
               begin_ + offsetOfKey(accepted, place));
    }

    char const* begin_;
    char const* end_;
    char const* at_ = begin_;
    Limits const& limits_;
    std::shared_ptr<std::string const> const* owner_;
    std::size_t mostElements_;
    ValueStack stack_;
    std::size_t mark_ = 0; ///< of the innermost open container
    std::size_t depth_ = 0;
    bool inObject_ = false;
    std::string text_; ///< of a string with escapes
};

/// All that is left in `stream`, or, of one that may have no end, more than `most` bytes.
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
    Parser(text, limits, nullptr).parse(element);
}

void ReaderJson::Read(Element& element, std::shared_ptr<std::string const> const& text,
                      Limits const& limits) {
    if (text == nullptr)
        throw Exception::InvalidParameter("JSON text refused: there is no text");
    auto const owner = text; // which may be held by `element` alone
    Parser(*owner, limits, &owner).parse(element);
}

void ReaderJson::Read(Element& element, std::istream& stream, Limits const& limits) {
    Read(element, readAll(stream, limits.textBytes), limits);
}

} // namespace Tolv::MetaData
