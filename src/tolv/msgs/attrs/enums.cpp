#include <tolv/msgs/attrs/enums.h>

#include <tolv/msgs/attrs/detail/sentences.h>

namespace Tolv::MetaData {
template class ReflectorNoWriteParend<Msgs::Attrs::EnumVal>;
template class Reflector<Msgs::Attrs::EnumVal>;
template class ReflectorArray<Msgs::Attrs::EnumVal>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs::Attrs {

namespace {

bool isComplete(int /*value*/) { return true; }
bool isComplete(std::string const& /*value*/) { return true; }
bool isComplete(EnumVal const& entry) {
    return entry.value.initialized() && entry.literal.initialized();
}

std::string shown(EnumVal const& entry) {
    return Attrs::shown(entry.value()) + ' ' + Attrs::shown(entry.literal());
}

} // namespace

EnumVal::EnumVal(Lossless<int> value, std::string const& literal) {
    this->value = value;
    this->literal = literal;
}

bool EnumVal::operator==(EnumVal const& other) const {
    return value() == other.value() && literal() == other.literal();
}

EnumData::EnumData(EnumVal const& initial) {
    auto& copy = value.edit();
    copy = initial;
    if (!initial.value.initialized())
        copy.value.uninit();
    if (!initial.literal.initialized())
        copy.literal.uninit();
}

template <class T>
bool EnumeratedAttr<T>::isDisabled(std::size_t entry) const {
    if (!this->attributeMetaData.initialized())
        return false;
    auto const& flags = this->metaData().disabledList;
    return flags.initialized() && entry < flags().size() && flags()[entry];
}

template <class T>
bool EnumeratedAttr<T>::validate() const {
    if (!enums.initialized())
        return true;
    auto const& entries = enums();
    for (std::size_t i = 0; i < entries.size(); ++i)
        if (!isDisabled(i) && entries[i] == this->value())
            return true;
    return false;
}

template <class T>
std::string EnumeratedAttr<T>::explainInvalid() const {
    if (EnumeratedAttr::validate())
        return {};
    auto const& entries = enums();
    if (entries.empty())
        return "enums is empty, so that no value is valid";
    // If all entries are disabled, the value was not compared and may be unset.
    if (!this->value.initialized() || !isComplete(this->value()))
        return "all of enums is disabled";
    auto const& value = this->value();
    for (auto const& entry : entries)
        if (isComplete(entry) && entry == value)
            return shown(value) + " is disabled in enums";
    return shown(value) + " is not in enums";
}

template class EnumeratedAttr<EnumVal>;
template class EnumeratedAttr<int>;
template class EnumeratedAttr<std::string>;

} // namespace Tolv::Msgs::Attrs
