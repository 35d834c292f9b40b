#include <tolv/core/exceptions.h>
#include <tolv/core/metadata/detail/encoding.h>
#include <tolv/core/metadata/detail/passing_tree.h>
#include <tolv/core/metadata/detail/read_recorder.h>
#include <tolv/core/metadata/detail/tree.h>
#include <tolv/core/msgs/message.h>

namespace Tolv::MetaData {
template class ReflectorNoWriteParend<Msgs::Identifier>;
template class Reflector<Msgs::Identifier>;
} // namespace Tolv::MetaData

namespace Tolv::Msgs {

namespace {

using MetaData::Doc;
using MetaData::field;

constexpr auto idField = field<"MessageID", Doc{"the number of the message class"}>;
MetaData::Key const& idKey = idField;

/// Assigns the address given to a constructor; an empty address leaves the field unset.
void assignGiven(ReflectedAddress& field, Address const& address) {
    if (!address.empty())
        field.assign(address);
}

} // namespace

Message::Message(unsigned long long id, Address const& sender, Address const& destination)
    : id_(this, idField, MetaData::Required, id),
      sender(this, field<"Sender", Doc{"the address of the endpoint that sends"}>,
             MetaData::Optional),
      destination(this, field<"Destination", Doc{"the address of the endpoint that receives"}>,
                  MetaData::Optional) {
    assignGiven(this->sender, sender);
    assignGiven(this->destination, destination);
}

Message::Message(MetaData::Object const& object) : Message(0, {}, {}) {
    using namespace MetaData::Detail;
    MirroredObject::copyFromMetaData(ContainerView(Access::rep(object)).element());
}

Message& Message::operator=(Message const& other) {
    if (typeid(*this) == typeid(other))
        id_ = other.id_;
    sender = other.sender;
    destination = other.destination;
    return *this;
}

Message::~Message() = default;

void Message::copyToMetaData(MetaData::Element& element) const {
    MetaData::Detail::LastingFields const lasting(*this);
    MirroredObject::copyToMetaData(element);
}

void Message::copyFromMetaData(MetaData::Element const& element) {
    [[maybe_unused]] MetaData::Object const& object = element; // throws before any field is reset
    MirroredObject::copyFromMetaData(element);
}

std::shared_ptr<Message> Message::CreateFromMetaData(MetaData::Element const& element) {
    if (!element.isObject())
        throw Exception::InvalidParameter(std::string("expected a message, found ") +
                                          describe(element.kind()));
    auto const* const idElement = element.find(idKey);
    if (idElement == nullptr)
        throw Exception::InvalidParameter("expected a message, found an object without key \"" +
                                          idKey.name() + '"');
    unsigned long long id = 0;
    if (!TryGetAs(*idElement, id))
        throw Exception::InvalidParameter("key \"" + idKey.name() + "\" holds no valid message id");
    auto* const creator = MsgFactory::Instance().find(id);
    MetaData::Detail::MessageRead const reported(element);
    return std::shared_ptr<Message>(creator != nullptr ? creator(element) : nullptr);
}

std::shared_ptr<Message> Message::CreateFromText(std::string_view text, Limits const& limits) {
    MetaData::Detail::PassingTree const tree(text, limits);
    return CreateFromMetaData(tree.root());
}

} // namespace Tolv::Msgs
