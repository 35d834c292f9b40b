#include <ios>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include <CLI/CLI.hpp>

#include <token/hmac_sha256.h>

#include <tolv/core/base64.h>
#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/json.h>
#include <tolv/msgs/structs/json_web_token.h>

#include "captured_cout.h"
#include "commands.h"
#include "input.h"
#include "json_object.h"
#include "line_views.h"
#include "text.h"
#include "tree_text.h"

namespace Tolv::Tool {

namespace {

using MetaData::Element;
using Msgs::Structs::JsonWebToken;

constexpr std::size_t mostTokenBytes = std::size_t{1} << 28U;

struct Options {
    bool json = false;
    std::string keyFile; ///< empty: the signature is not verified
    std::string file;
};

/// The result of verifying the signature.
struct Verification {
    enum Outcome { notVerified, authentic, notAuthentic } outcome;
    std::string reason; ///< why it is not authentic or not verified
};

char const* describe(Verification::Outcome outcome) {
    switch (outcome) {
    case Verification::authentic:
        return "authentic";
    case Verification::notAuthentic:
        return "not authentic";
    case Verification::notVerified:
        break;
    }
    return "not verified";
}

/// Null without a key file.
std::shared_ptr<HmacSha256> algorithmOf(std::string const& keyFile) try {
    return keyFile.empty() ? nullptr : std::make_shared<HmacSha256>(readKey(keyFile));
} catch (std::ios_base::failure const&) { // it is a directory
    throw UsageError("cannot read the key file " + word(keyFile));
}

/// Reads the text of the token, without leading or trailing white space.
std::string readToken(std::string const& file) try {
    constexpr auto space = " \t\r\n";
    auto const text = Input(file, "a signed token").read(mostTokenBytes + 1);
    if (text.size() > mostTokenBytes)
        throw UsageError(Input::name(file) + " is longer than " + std::to_string(mostTokenBytes) +
                         " bytes");
    auto const begin = text.find_first_not_of(space);
    return begin == text.npos ? std::string()
                              : text.substr(begin, text.find_last_not_of(space) + 1 - begin);
} catch (std::system_error const& e) {
    throw UsageError("cannot read " + Input::name(file) + ": " + e.code().message());
}

JsonWebToken parsed(std::string const& text, std::string const& file) try {
    return JsonWebToken(nullptr, text);
} catch (Exception::Base const& e) {
    throw UsageError("no token in " + Input::name(file) + ": " + harmless(e.what()));
}

/// The tree of the first segment of a token.
Element headerOf(std::string_view token) {
    auto const segment = token.substr(0, token.find('.'));
    std::string json(Base64::decodedSize(segment), '\0');
    Base64::decode(segment, reinterpret_cast<unsigned char*>(json.data()), json.size());
    Element header;
    MetaData::ReaderJson::Read(header, json);
    return header;
}

/// @param algorithm null without a key
Verification verify(JsonWebToken& token, std::shared_ptr<HmacSha256> const& algorithm) {
    if (algorithm == nullptr)
        return {Verification::notVerified, "no --key-file"};
    if (auto const& name = algorithm->algorithmName(); token.algorithm() != name)
        return {Verification::notAuthentic,
                "\"alg\" is " + quoted(token.algorithm(), 40) + ", the key is for " + name};
    token.setMacAlgorithm(algorithm);
    if (!token.verify())
        return {Verification::notAuthentic, "the signature does not match the key and content"};
    return {Verification::authentic, {}};
}

struct Shown {
    Element header;
    Element payload;
    std::optional<ExaminedLine> message; ///< the message in the payload, if any
    Verification verification;
};

void addTree(TreeText& text, std::string_view label, Element const& tree) {
    auto const isObject = tree.isObject() && !tree.object().empty();
    text.line(2, isObject ? std::string(label) : std::string(label) + "  " + shortText(tree, 88));
    if (isObject)
        text.fields(tree.object(), 4);
}

std::string textOf(Shown const& shown, Classes const& classes) {
    std::string out;
    TreeText text(classes, out);
    auto const& [outcome, reason] = shown.verification;
    text.line(0,
              "token  " + std::string(describe(outcome)) + (reason.empty() ? "" : ": " + reason));
    addTree(text, "header", shown.header);
    auto payload = shown.payload;
    if (shown.message) // it is shown below
        payload.makeObject(0).erase("msg");
    addTree(text, "payload", payload);
    if (shown.message)
        out += messageText(*shown.message, "message  ", classes, Style::ofStandardOutput());
    return out;
}

std::string jsonOf(Shown const& shown, Classes const& classes) {
    auto const jsonOfTree = [](Element const& tree) {
        std::string json;
        MetaData::WriterJson::Write(tree, json);
        return json;
    };
    JsonObject out;
    out.add("verification", describe(shown.verification.outcome));
    if (!shown.verification.reason.empty())
        out.add("reason", shown.verification.reason);
    out.addJson("header", jsonOfTree(shown.header));
    out.addJson("payload", jsonOfTree(shown.payload));
    if (shown.message) {
        JsonObject message;
        addMessage(message, *shown.message, classes);
        out.addJson("message", message.text());
    }
    return out.text() + '\n';
}

int showToken(Options const& options, Output& out) {
    auto const algorithm = algorithmOf(options.keyFile);
    auto const text = readToken(options.file);
    auto token = parsed(text, options.file);

    Classes const classes;
    CapturedCout printed;
    Shown shown{headerOf(text), token.payload(), {}, verify(token, algorithm)};
    if (auto const* const message = shown.payload.find("msg");
        message != nullptr && message->find("MessageID") != nullptr)
        shown.message = examine(printed, *message);
    out.write((options.json ? jsonOf : textOf)(shown, classes));
    return shown.verification.outcome == Verification::notAuthentic ? notAuthentic : success;
}

} // namespace

void addTokenCommand(CLI::App& app, Action& chosen) {
    auto const options = std::make_shared<Options>();
    auto* const command = app.add_subcommand("token", "Shows and verifies a signed token");
    command->add_flag("--json", options->json, "Print one JSON object");
    command
        ->add_option("--key-file", options->keyFile,
                     "File with the HS256 key (a trailing line end is ignored)")
        ->check([](std::string const& file) {
            return file.empty() ? "the name of the key file is empty" : "";
        })
        ->option_text("FILE");
    command->add_option("FILE", options->file, "File with the token; \"-\" is the standard input")
        ->type_name("")
        ->required();
    command->footer(
        "Shows the header and the payload, and the message under \"msg\" in the payload like\n"
        "\"tolvmsg decode\". Without a key nothing is verified. The key is never shown. The time\n"
        "is not checked: an expired token verifies like any other.\n"
        "\n"
        "With --json the output has \"verification\" (\"authentic\", \"not authentic\" or\n"
        "\"not verified\"), \"reason\" unless authentic, \"header\", \"payload\", and \"message\" "
        "as\n"
        "in \"decode --json\".\n"
        "\n"
        "Examples:\n"
        "  tolvmsg token login.jwt\n"
        "  tolvmsg token --key-file shared.key - < login.jwt\n"
        "\n"
        "Exit status: 0 authentic or not verified; 1 not authentic; 2 wrong usage, unreadable\n"
        "file, or no token; 3 the output cannot be written.");
    command->callback([&chosen, options] {
        chosen = [options](Output& out) { return showToken(*options, out); };
    });
}

} // namespace Tolv::Tool
