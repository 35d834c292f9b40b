#include <tolv/msgs/introspection/description.h>

#include <memory>
#include <mutex>
#include <unordered_map>

#include <tolv/core/detail/fork.h>
#include <tolv/core/detail/type_name.h>
#include <tolv/core/exceptions.h>
#include <tolv/msgs/catalogue.h>

namespace Tolv::Msgs::Introspection {

namespace {

struct Known {
    std::mutex mutex;
    std::unordered_map<MetaData::ValueType const*, std::unique_ptr<Type>> types;
};

Known& known() {
    static auto& table = *new Known; // types live until the process ends
    return table;
}

[[maybe_unused]] bool const forksInOrder =
    Tolv::Detail::holdAcrossFork([]() -> std::mutex& { return known().mutex; });

std::string nameOf(Type const& type) {
    auto const& source = *type.source;
    if (type.kind == TypeKind::text)
        return "std::string";
    if (type.kind == TypeKind::list)
        return "std::vector<" + type.element->name + ">";
    if (type.messageId.has_value())
        if (auto const* const row = findMessage(*type.messageId))
            return row->fullAlias();
    return Tolv::Detail::nameOf(*source.type);
}

/// A description that lacks its name.
Type made(MetaData::ValueType const& source) {
    Type type;
    type.source = &source;
    type.kind = source.kind;
    type.minimum = source.minimum;
    type.maximum = source.maximum;
    type.encodedTag = source.encodedTag;
    type.strict = source.strict;
    type.admits = source.admits;
    if (source.element != nullptr)
        type.element = &typeOf(*source.element);
    if (source.literals != nullptr)
        type.literals = source.literals();
    if (source.messageId != nullptr)
        type.messageId = source.messageId();
    type.name = nameOf(type);
    return type;
}

std::vector<FieldDescription> described(MetaData::RecordForm const& form) {
    std::vector<FieldDescription> fields;
    for (auto const& field : form.fields) {
        auto one = describeField(field);
        if (auto const* const value = form.written.find(*field.info))
            one.defaultValue = *value;
        if (findField(fields, one.key) != nullptr)
            throw Exception::InvalidOperation(Tolv::Detail::nameOf(*form.type) + " has the key " +
                                              one.key + " twice");
        fields.push_back(std::move(one));
    }
    return fields;
}

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

std::vector<FieldDescription> Type::fields() const {
    if (kind != TypeKind::record)
        return {};
    if (source->form == nullptr)
        throw Exception::InvalidOperation(name +
                                          " has custom conversion and no table of its keys: "
                                          "declare `static ... mirroredKeys()` in the class");
    return described(source->form());
}

std::vector<FieldDescription> ClassDescription::payload() const {
    auto const* const data = findField(fields, "Data");
    return data != nullptr ? data->type->fields() : std::vector<FieldDescription>();
}

Type const& typeOf(MetaData::ValueType const& source) {
    auto& all = known();
    {
        std::lock_guard const lock(all.mutex);
        if (auto const found = all.types.find(&source); found != all.types.end())
            return *found->second;
    }
    // Without the lock, since this makes the types of entries, too.
    auto type = std::make_unique<Type>(made(source));
    std::lock_guard const lock(all.mutex);
    return *all.types.try_emplace(&source, std::move(type)).first->second;
}

FieldDescription describeField(MetaData::RecordForm::Field const& from) {
    auto const& info = *from.info;
    FieldDescription field;
    field.key = info.text();
    field.required = from.required;
    if (info.type() == nullptr)
        throw Exception::InvalidOperation("the field " + field.key +
                                          " is of a class that does not say what its values are");
    field.type = &typeOf(*info.type());
    field.unit = info.unit();
    field.doc = info.doc();
    field.example = info.example();
    if (info.hasRange())
        field.range.emplace(info.minimum(), info.maximum());
    field.literals = info.literals();
    field.closed = info.isClosed();
    if (field.type->kind == TypeKind::word) {
        field.literals = field.type->literals;
        field.closed = true;
    }
    return field;
}

std::vector<FieldDescription> describeFields(MetaData::MirroredObject const& record) {
    return described(MetaData::formOf(record));
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
