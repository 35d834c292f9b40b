#include <algorithm>
#include <cstdio>
#include <set>

#include "catalogue/html.h"
#include "catalogue/pages.h"
#include "ids.h"
#include "text.h"

namespace Tolv::Tool::Catalogue {

namespace {

std::string joined(std::set<std::string> const& words) {
    std::string text;
    for (auto const& word : words)
        text.append(text.empty() ? "" : " ").append(word);
    return text;
}

Html line(Entry const& entry) {
    auto const& known = *entry.known;
    std::set<std::string> keys;
    std::set<std::string> records;
    for (auto const& row : entry.rows) {
        if (row.depth > 0)
            keys.insert(row.field.key);
        if (auto const* const record = recordIn(row.field.type))
            records.insert(record->name);
    }
    char brief[20];
    std::snprintf(brief, sizeof brief, "0x%llx", known.id);
    auto const ids = dotted(known.id) + ' ' + hexadecimal(known.id) + ' ' + brief + ' ' +
                     std::to_string(known.id);
    auto const content = tag("span", {{"class", "name"}},
                             known.alias.empty() ? Html(known.className) : Html(known.shortAlias)) +
                         tag("span", {{"class", "role"}}, known.role) +
                         tag("code", {{"class", "id"}}, dotted(known.id));
    return tag("li",
               {{"data-name", known.name()},
                {"data-ids", ids},
                {"data-keys", joined(keys)},
                {"data-records", joined(records)}},
               tag("a", {{"href", entry.page()}}, content)) +
           "\n";
}

Html family(std::string const& name, std::vector<Entry const*> const& entries) {
    Html list;
    for (auto const* const entry : entries)
        list += line(*entry);
    auto const title = name.empty() ? "Others" : name;
    return tag("section", {{"class", "family"}},
               tag("h2", Html(title) + " " +
                             tag("span", {{"class", "count"}}, std::to_string(entries.size()))) +
                   tag("ul", {{"class", "messages"}}, list)) +
           "\n";
}

} // namespace

std::string indexPage(std::vector<Entry> const& entries) {
    std::vector<std::pair<std::string, std::vector<Entry const*>>> families;
    for (auto const& entry : entries) {
        auto const& name = entry.description.family;
        auto const found = std::find_if(families.begin(), families.end(),
                                        [&](auto const& one) { return one.first == name; });
        if (found != families.end())
            found->second.push_back(&entry);
        else
            families.push_back({name, {&entry}});
    }
    auto const search = Html::markup(
        R"(<form class="find large" role="search"><input type="search" name="q" id="search" )"
        R"(placeholder="Name, id, role, key or record" aria-label="Search messages" )"
        R"(aria-controls="results" autocomplete="off" spellcheck="false"><kbd>/</kbd></form>)"
        R"(<p class="hint" id="status" role="status" aria-live="polite"></p>)");
    auto body = tag("div", {{"class", "hero"}},
                    tag("h1", "Messages") +
                        tag("p", {{"class", "lede"}},
                            "Every message that instruments and their clients exchange: " +
                                counted(entries.size(), "class", "classes") + " in " +
                                counted(families.size(), "family", "families") +
                                ", with fields, schema, example and code.") +
                        search) +
                tag("ul", {{"class", "messages"}, {"id", "results"}, {"hidden", ""}}, {});
    Html all;
    for (auto const& [name, members] : families)
        all += family(name, members);
    body += tag("div", {{"id", "families"}}, all);
    return page("Messages", body, false);
}

} // namespace Tolv::Tool::Catalogue
