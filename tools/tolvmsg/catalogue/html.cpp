#include "catalogue/html.h"

#include "text.h"

namespace Tolv::Tool::Catalogue {

namespace {

/// A void element, without a closing tag.
Html single(std::string_view name, Attributes const& attributes) {
    auto text = tag(name, attributes, {}).text();
    text.resize(text.size() - name.size() - 3); // without the closing tag
    return Html::markup(std::move(text));
}

Html header(bool search) {
    auto const brand =
        tag("a", {{"class", "brand"}, {"href", "index.html"}},
            tag("span", {{"class", "mark"}, {"aria-hidden", "true"}}, "T") + "Message catalogue");
    auto const field =
        tag("form", {{"class", "find"}, {"action", "index.html"}, {"role", "search"}},
            single("input", {{"type", "search"},
                             {"name", "q"},
                             {"id", "search"},
                             {"placeholder", "Search messages"},
                             {"aria-label", "Search messages"},
                             {"autocomplete", "off"}}) +
                tag("kbd", "/"));
    auto const toggle = tag("button",
                            {{"type", "button"},
                             {"id", "theme"},
                             {"title", "Light or dark"},
                             {"aria-label", "Switch between light and dark"}},
                            tag("span", {{"aria-hidden", "true"}}, {}));
    return tag("header", {{"class", "top"}},
               tag("div", {{"class", "bar"}}, brand + (search ? field : Html()) + toggle));
}

} // namespace

Html::Html(std::string_view text) {
    auto const valid = validUtf8(text);
    text_.reserve(valid.size());
    for (auto const c : valid) {
        switch (c) {
        case '&':
            text_ += "&amp;";
            break;
        case '<':
            text_ += "&lt;";
            break;
        case '>':
            text_ += "&gt;";
            break;
        case '"':
            text_ += "&quot;";
            break;
        case '\'':
            text_ += "&#39;";
            break;
        default:
            text_ += c;
        }
    }
}

Html Html::markup(std::string text) {
    Html html;
    html.text_ = std::move(text);
    return html;
}

Html tag(std::string_view name, Attributes const& attributes, Html const& content) {
    std::string text("<");
    text += name;
    for (auto const& attribute : attributes)
        text.append(" ")
            .append(attribute.name)
            .append("=\"")
            .append(Html(attribute.value).text() + '"');
    text.append(">").append(content.text()).append("</").append(name).append(">");
    return Html::markup(std::move(text));
}

Html link(std::string const& target, Html const& content) {
    return tag("a", {{"href", target}}, content);
}

Html code(std::string_view text) { return tag("code", text); }

Html listing(std::string const& id, std::string_view text) {
    return tag("div", {{"class", "listing"}},
               tag("button", {{"type", "button"}, {"class", "copy"}, {"data-copy", id}}, "Copy") +
                   tag("pre", {{"tabindex", "0"}}, tag("code", {{"id", id}}, text)));
}

std::string page(std::string_view title, Html const& body, bool search) {
    auto const head =
        single("meta", {{"charset", "utf-8"}}) +
        single("meta", {{"name", "viewport"}, {"content", "width=device-width, initial-scale=1"}}) +
        single("meta", {{"name", "color-scheme"}, {"content", "light dark"}}) +
        tag("title", title) + single("link", {{"rel", "icon"}, {"href", "data:,"}}) +
        single("link", {{"rel", "stylesheet"}, {"href", "site.css"}}) +
        tag("script", {{"src", "site.js"}}, {});
    auto const skip = tag("a", {{"class", "skip"}, {"href", "#content"}}, "Skip to the content");
    return "<!DOCTYPE html>\n" +
           tag("html", {{"lang", "en"}},
               tag("head", head) + "\n" +
                   tag("body", skip + header(search) + tag("main", {{"id", "content"}}, body)))
               .text() +
           '\n';
}

} // namespace Tolv::Tool::Catalogue
