#include <cstdlib>
#include <memory>
#include <string_view>
#include <utility>

#include <cxxabi.h>

#include <tolv/core/detail/type_name.h>

namespace Tolv::Detail {

namespace {

void replaceAll(std::string& text, std::string_view what, std::string_view by) {
    for (auto at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
        text.replace(at, what.size(), by);
}

} // namespace

std::string nameOf(std::type_info const& type) {
    std::unique_ptr<char, decltype(&std::free)> const demangled(
        abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr), &std::free);
    std::string name = demangled != nullptr ? demangled.get() : type.name();
    static constexpr std::pair<std::string_view, std::string_view> shorter[] = {
        {"Tolv::Msgs::", ""},
        {"Tolv::MetaData::", ""},
        {"(anonymous namespace)::", ""},
        {"std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >",
         "std::string"},
        {"(unsigned short)", ""},
        {"> >", ">>"},
        {", std::allocator<int>>", ">"},
    };
    for (auto const& [what, by] : shorter)
        replaceAll(name, what, by);
    return name;
}

} // namespace Tolv::Detail
