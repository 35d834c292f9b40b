#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include <tolv/messages.h>

namespace Example {

/// The attributes of an instrument: named messages, each of its own class. A message is never
/// changed once it is here, but replaced, so that lists of messages can share it.
class Attributes {
public:
    using Message = Tolv::Msgs::Attrs::AttrMessage;

    /// Adds an attribute, or replaces it.
    void put(std::string const& name, std::shared_ptr<Message> message) {
        attributes_[name] = std::move(message);
    }

    /// @throws Tolv::Exception::InvalidParameter when there is none.
    [[nodiscard]] std::shared_ptr<Message> const& at(std::string const& name) const;

    [[nodiscard]] bool contains(std::string const& name) const {
        return attributes_.contains(name);
    }

    /// The attribute with the value of `wanted` and its own metadata, for `put`.
    /// @throws Tolv::Exception::InvalidParameter when the attribute is of another class or its
    /// metadata does not allow the value; the text says why.
    template <class M>
    [[nodiscard]] std::shared_ptr<M> withValueOf(M const& wanted, std::string const& name) const {
        auto const current = std::dynamic_pointer_cast<M>(at(name));
        if (current == nullptr)
            throw Tolv::Exception::InvalidParameter(name + ": this attribute has another type");
        auto changed = std::make_shared<M>(current->payload());
        changed->editPayload().value = wanted.payload().value();
        if (auto const why = changed->payload().explainInvalid(); !why.empty())
            throw Tolv::Exception::InvalidParameter(name + ": " + why);
        return changed;
    }

    /// Name and type of one. @throws as `at`
    [[nodiscard]] Tolv::Msgs::Attrs::AttrInfoData describe(std::string const& name) const;

    /// Name and type of each.
    [[nodiscard]] Tolv::Msgs::Attrs::ArrayDataConcrete<Tolv::Msgs::Attrs::AttrInfoMessage>
    describe() const;

    /// All of them, by name.
    [[nodiscard]] std::vector<std::shared_ptr<Message>> all() const;

private:
    std::map<std::string, std::shared_ptr<Message>> attributes_;
};

} // namespace Example
