#pragma once

#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>

#include <tolv/core/export.h>
#include <tolv/core/limits.h>
#include <tolv/core/metadata/element.h>

namespace Tolv::MetaData {

/// Reads JSON text (RFC 8259) into a tree. The reader is strict: it requires valid UTF-8, and
/// refuses comments, trailing commas, anything but white space after the value, and duplicate keys
/// in an object (RFC 7493).
///
/// An integer becomes a signed 64-bit number if it fits, otherwise an unsigned one if it fits. All
/// other numbers, including those with a fraction or an exponent, become the nearest double. "-0"
/// is the double -0.0; a number too large for a double is refused.
struct TOLV_CORE_API ReaderJson {
    /// Replaces `element` with the value of `text`.
    /// @throws Exception::InvalidParameter if the text is refused, saying why and at which byte,
    /// counted from 0. `element` is then unchanged.
    static void Read(Element& element, std::string_view text, Limits const& limits = {});

    /// The same, without copying long strings such as encoded traces: elements refer to strings of
    /// 4096 bytes or more without escapes in place, and keep all of `text` alive as long as they
    /// do. `text` must not be modified afterwards.
    /// @throws Exception::InvalidParameter also if `text` is null.
    static void Read(Element& element, std::shared_ptr<std::string const> const& text,
                     Limits const& limits = {});

    /// The same for the rest of `stream`.
    /// @throws Exception::InvalidParameter also if the stream fails.
    static void Read(Element& element, std::istream& stream, Limits const& limits = {});
};

/// Writes a tree as JSON text (RFC 8259) that `ReaderJson` reads back as the same tree: numbers are
/// exact, and keys keep their order. A double that is not finite is written as one of the strings
/// "NaN", "Infinity" and "-Infinity".
struct TOLV_CORE_API WriterJson {
    /// Replaces `text`, reusing its memory.
    /// @param element the tree
    /// @param text receives the JSON
    /// @param compact true: one line without white space; false: indented.
    /// @throws Exception::InvalidParameter if a string is not valid UTF-8, naming the path to it,
    /// or if the tree is deeper than `Limits::depth`.
    static void Write(Element const& element, std::string& text, bool compact = true);

    /// The same into a stream; nothing is written if the tree is refused.
    static void Write(Element const& element, std::ostream& stream, bool compact);
};

} // namespace Tolv::MetaData
