#pragma once

#include <string>
#include <string_view>
#include <vector>

/// @file
/// HTML fragments. Text is escaped when it is converted to HTML, so that it cannot be mistaken for
/// markup.
namespace Tolv::Tool::Catalogue {

class Html {
public:
    Html() = default;
    // NOLINTBEGIN(google-explicit-constructor): converting escapes the text
    Html(std::string_view text);
    Html(std::string const& text) : Html(std::string_view(text)) {}
    Html(char const* text) : Html(std::string_view(text)) {}
    // NOLINTEND(google-explicit-constructor)

    /// HTML from text that already is markup.
    static Html markup(std::string text);

    [[nodiscard]] std::string const& text() const noexcept { return text_; }
    [[nodiscard]] bool empty() const noexcept { return text_.empty(); }

    Html& operator+=(Html const& more) {
        text_ += more.text_;
        return *this;
    }
    friend Html operator+(Html left, Html const& right) { return left += right; }

private:
    std::string text_;
};

struct Attribute {
    std::string_view name;
    std::string value;
};
using Attributes = std::vector<Attribute>;

/// `<name attributes>content</name>`
Html tag(std::string_view name, Attributes const& attributes, Html const& content);
inline Html tag(std::string_view name, Html const& content) { return tag(name, {}, content); }

Html link(std::string const& target, Html const& content);
Html code(std::string_view text);

/// Lines of code with a copy button.
Html listing(std::string const& id, std::string_view text);

/// A whole page; `body` is the content below the header.
/// @param search whether the header has a search field; the index page has a larger one of its own
std::string page(std::string_view title, Html const& body, bool search);

} // namespace Tolv::Tool::Catalogue
