#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <tolv/msgs/app/messages.h>
#include <tolv/msgs/attrs/batches.h>

/// @file
/// The messages that are measured, and our roads in both directions.
namespace Tolv::Bench {

constexpr std::size_t resourceCount = 40;
constexpr std::size_t sampleCount = 1'000'000;
constexpr std::size_t batchSize = 10'000;

/// From text to typed message, through the factory.
inline std::shared_ptr<Msgs::Message> fromText(std::string_view text) {
    return Msgs::Message::CreateFromText(text);
}

/// From message to text, whose memory is reused.
inline void toText(Msgs::Message const& message, std::string& text) { message.copyToText(text); }

inline std::string textOf(Msgs::Message const& message) {
    std::string text;
    toText(message, text);
    return text;
}

Msgs::App::ConnectMessage connect();
/// An application that asks for `count` resources.
Msgs::App::AppPropertiesResponseMessage properties(std::size_t count);
/// A number within limits; with metadata, all of its fields are set.
Msgs::Attrs::DoubleMessage number(std::size_t index, bool described);
/// Samples of full precision.
Msgs::Attrs::DoubleTraceMessage trace(std::size_t count);
/// The same samples in a message that was read, and will be written, as a plain array of numbers.
Msgs::Attrs::DoubleTraceMessage plainTrace(std::size_t count);
/// `number` 0 to `count` - 1.
Msgs::Attrs::DoubleBatchMessage batch(std::size_t count, bool described);

/// Texts of the messages above, created on first use and kept: all libraries read the same text.
std::string const& connectText();
std::string const& propertiesText();
std::string const& traceText();
std::string const& plainTraceText();

} // namespace Tolv::Bench
