#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <tolv/core/metadata/element.h>
#include <tolv/core/msgs/message.h>

/// @file
/// What typed messages tell beyond their trees: whether an attribute is valid, how a person reads
/// it, and which messages are inside of a message.
namespace Tolv::Tool {

/// What a payload's own `validate` says.
struct Verdict {
    bool valid;
    std::string reason; ///< why it is not
};

/// Empty for a message whose payload has no `validate`. It does not throw for what the message
/// holds: a value that is not set and a pattern that is no expression are reasons like others.
std::optional<Verdict> verdictOf(Msgs::Message const& message);

/// An attribute in words.
struct Reading {
    std::vector<std::pair<std::string, std::string>> lines; ///< label and text
    MetaData::Element rest; ///< of the payload's tree, what the lines don't tell
};

/// Empty for a message that is no attribute, or whose payload did not read.
/// @param data what the payload writes
std::optional<Reading> readingOf(Msgs::Message const& message, MetaData::Element const& data);

/// The messages that the payload lists, in that order. They live as long as `message` is left as it
/// is.
std::vector<Msgs::Message const*> messagesInside(Msgs::Message const& message);

/// What the payload of a message inside of another one says.
struct InnerVerdict {
    std::string path; ///< "Data.Attributes[3]"
    Verdict verdict;
};

/// The verdicts of all messages inside of `message`, however deep.
std::vector<InnerVerdict> verdictsInside(Msgs::Message const& message);

} // namespace Tolv::Tool
