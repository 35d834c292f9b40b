#pragma once

#include <string>
#include <string_view>
#include <vector>

/// @file
/// HTML in the making. What is text becomes escaped when it becomes HTML, so that no text can be
/// mistaken for markup.
namespace Tolv::Tool::Catalogue {

class Html {
public:
    Html() = default;
    // NOLINTBEGIN(google-explicit-constructor): a text is HTML, once it is escaped
    Html(std::string_view text);
    Html(std::string const& text) : Html(std::string_view(text)) {}
    Html(char const* text) : Html(std::string_view(text)) {}
    // NOLINTEND(google-explicit-constructor)

    /// Text that is markup already.
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

/// Lines of code with a button that copies them.
Html listing(std::string const& id, std::string_view text);

/// A whole page; `body` is what stands below the header.
/// @param search whether the header has a field for it; the index has a larger one of its own
std::string page(std::string_view title, Html const& body, bool search);

} // namespace Tolv::Tool::Catalogue
