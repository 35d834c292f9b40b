#include <tolv/msgs/introspection/description.h>

#include <mutex>
#include <typeindex>
#include <unordered_map>

#include <tolv/core/detail/fork.h>
#include <tolv/msgs/catalogue.h>
#include <tolv/msgs/introspection/detail/tables.h>
#include <tolv/msgs/introspection/detail/types.h>

namespace Tolv::Msgs::Introspection {

namespace {

struct Known {
    std::mutex mutex;
    std::unordered_map<std::type_index, Type const*> byField;
};

Known& known() {
    static Known table;
    return table;
}

[[maybe_unused]] bool const forksInOrder =
    Tolv::Detail::holdAcrossFork([]() -> std::mutex& { return known().mutex; });

/// A message of the class registered for `id`, built without knowing the class. Its payload, if
/// any, has not been read.
std::shared_ptr<Message> frameOf(unsigned long long id) {
    auto* const create = Message::MsgFactory::Instance().find(id);
    if (create == nullptr)
        return nullptr;
    MetaData::Element element;
    MetaData::SetAs<unsigned long long>(id, element["MessageID"]);
    return std::shared_ptr<Message>(create(element));
}

} // namespace

namespace Detail {

std::string nameOfMessage(unsigned long long id, std::type_info const& type) {
    auto const* const row = findMessage(id);
    return row != nullptr ? row->fullAlias() : Tolv::Detail::nameOf(type);
}

void enter(std::type_info const& field, Type const& type) {
    std::lock_guard const lock(known().mutex);
    known().byField.try_emplace(field, &type);
}

void complete(std::vector<FieldDescription>& fields, std::type_info const& record,
              MetaData::Element const& written) {
    for (auto& field : fields) {
        if (auto const* const value = written.find(field.key))
            field.defaultValue = *value;
        annotate(field, record);
    }
}

} // namespace Detail

std::vector<FieldDescription> Type::fields() const {
    return makeFields != nullptr ? makeFields() : std::vector<FieldDescription>();
}

std::vector<FieldDescription> ClassDescription::payload() const {
    auto const* const data = findField(fields, "Data");
    return data != nullptr && data->type != nullptr ? data->type->fields()
                                                    : std::vector<FieldDescription>();
}

Type const* typeOfField(MetaData::ReflectorBase const& field) {
    return typeOfField(std::type_index(typeid(field)));
}

Type const* typeOfField(std::type_index field) {
    static bool const own = (Detail::addOwnTypes(), true);
    std::lock_guard const lock(known().mutex);
    auto const found = own ? known().byField.find(field) : known().byField.end();
    return found != known().byField.end() ? found->second : nullptr;
}

std::vector<FieldDescription> describeFields(MetaData::MirroredObject const& record) {
    std::vector<FieldDescription> fields;
    for (auto const* const member : record.members()) {
        auto& field = fields.emplace_back();
        field.key = member->name();
        field.type = typeOfField(*member);
        field.required = member->isRequired();
    }
    MetaData::Element written;
    record.copyToMetaData(written);
    Detail::complete(fields, typeid(record), written);
    return fields;
}

FieldDescription const* findField(std::vector<FieldDescription> const& fields,
                                  std::string_view key) {
    for (auto const& field : fields)
        if (field.key == key)
            return &field;
    return nullptr;
}

std::optional<ClassDescription> describe(unsigned long long id) {
    ClassDescription result;
    result.id = id;
    std::shared_ptr<Message> message;
    if (auto const* const row = findMessage(id)) {
        result.family = row->family;
        result.alias = row->fullAlias();
        result.className = row->className;
        result.payloadName = row->payload;
        result.role = row->role;
        message = row->make();
    } else {
        message = frameOf(id);
    }
    if (message == nullptr)
        return {};
    auto const& built = *message;
    if (result.className.empty())
        result.className = Tolv::Detail::nameOf(typeid(built));
    result.fields = describeFields(*message);
    return result;
}

} // namespace Tolv::Msgs::Introspection
