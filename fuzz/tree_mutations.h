#pragma once

#include <string>
#include <utility>
#include <vector>

#include <tolv/core/metadata/json.h>

namespace Tolv::Fuzzing {

/// The place of a value in its parent, an object or an array. Any change of the tree other than to
/// this value invalidates it.
class Place {
public:
    Place(MetaData::Element& parent, std::string key) : parent_(&parent), key_(std::move(key)) {}
    Place(MetaData::Element& parent, unsigned int index) : parent_(&parent), index_(index) {}

    [[nodiscard]] MetaData::Element& value() const {
        return parent_->isObject() ? (*parent_)[key_] : array()[index_];
    }

    void remove() const {
        if (parent_->isObject()) {
            parent_->makeObject(0).erase(key_);
            return;
        }
        auto& entries = array();
        for (auto i = index_; i + 1 < entries.size(); ++i)
            entries[i].swap(entries[i + 1]);
        entries.resize(entries.size() - 1);
    }

private:
    [[nodiscard]] MetaData::Array& array() const { return *parent_; }

    MetaData::Element* parent_;
    std::string key_;
    unsigned int index_ = 0;
};

/// All values below `root`, in the order of the text.
inline void addPlaces(MetaData::Element& root, std::vector<Place>& places) {
    auto const add = [&](Place const& place) {
        places.push_back(place);
        addPlaces(place.value(), places);
    };
    if (root.isObject()) {
        std::vector<std::string> keys;
        for (auto const& member : root.object())
            keys.emplace_back(member.key());
        for (auto const& key : keys)
            add({root, key});
    } else if (root.isArray()) {
        for (unsigned int i = 0; i < std::as_const(root).array().size(); ++i)
            add({root, i});
    }
}

inline std::vector<Place> placesIn(MetaData::Element& root) {
    std::vector<Place> places;
    addPlaces(root, places);
    return places;
}

/// Values of all kinds, most of which no field expects: limits of types, unknown literals,
/// inconsistent encoded lists, invalid messages.
inline std::vector<MetaData::Element> const& strangeValues() {
    static auto const values = [] {
        std::vector<MetaData::Element> made;
        for (auto const* const text : {
                 // clang-format off
                 "null", "true", "false", "0", "-1", "1", "1.0", "0.5", "-0.0", "255", "256",
                 "65535", "65536", "2147483647", "2147483648", "-2147483648", "-2147483649",
                 "4294967295", "4294967296", "9223372036854775807", "9223372036854775808",
                 "-9223372036854775808", "18446744073709551615", "18446744073709551616", "3e10",
                 "1e308", "-1e308", "5e-324", R"("")", R"("x")", R"("NaN")", R"("-Infinity")",
                 R"("no word of any table")", R"("a\u0000b")", R"("\uD83D\uDE00")", R"("AA==")",
                 R"("[")", "[]", "[null]", "[0]", R"(["a","b"])", R"([1,"x"])", "[[],[]]",
                 "[0.5,-0.5]", "[true,2]", "[{}]", "[[[[[[[[]]]]]]]]", "{}", R"({"":null})",
                 R"({"type":9,"len":0})", R"({"type":9,"len":1,"base64":"AQAAAA=="})",
                 R"({"type":9,"len":18446744073709551615,"base64":"AQAAAA=="})",
                 R"({"type":1,"len":8,"base64":"/w=="})", R"({"type":1,"len":9,"base64":"/w=="})",
                 R"({"type":1,"len":7,"base64":"/w=="})", R"({"type":2,"len":4,"base64":"/w=="})",
                 R"({"type":3,"len":1,"base64":"AAAAAAAA+H8="})", R"({"type":3,"len":1})",
                 R"({"type":3,"base64":""})", R"({"type":4,"len":1,"base64":"AAAAAAAA+H8="})",
                 R"({"type":3,"len":1,"base64":"AAAAAAAA+H8"})", R"({"type":0,"len":1,"base64":0})",
                 R"({"MessageID":844424930131969})", R"({"MessageID":1,"Data":{}})",
                 R"({"MessageID":-1})", R"({"MessageID":1407374883553281,"Data":{"param":[{}]}})",
                 // clang-format on
             }) {
            MetaData::ReaderJson::Read(made.emplace_back(), text);
        }
        return made;
    }();
    return values;
}

/// `value` inside `levels` nested arrays, or objects with the key "x".
inline void wrap(MetaData::Element& value, std::size_t levels, bool inObjects) {
    for (std::size_t i = 0; i < levels; ++i) {
        MetaData::Element outer;
        auto& inner = inObjects ? outer["x"] : static_cast<MetaData::Array&>(outer)[0];
        inner.swap(value);
        value.swap(outer);
    }
}

} // namespace Tolv::Fuzzing
