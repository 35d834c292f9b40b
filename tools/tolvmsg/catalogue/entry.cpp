#include "catalogue/entry.h"

#include <utility>

#include "folder.h"

namespace Tolv::Tool::Catalogue {

using namespace Msgs::Introspection;

namespace {

Type const* inside(Type const* type, TypeKind kind) {
    while (type != nullptr && type->kind == TypeKind::list)
        type = type->element;
    return type != nullptr && type->kind == kind ? type : nullptr;
}

void unfold(std::vector<FieldDescription> const& fields, std::size_t depth,
            std::vector<Row>& rows) {
    constexpr std::size_t deepest = 12; // a record may contain itself
    for (auto const& field : fields) {
        rows.push_back({field, depth});
        if (auto const* const record = recordIn(field.type); record != nullptr && depth < deepest)
            unfold(record->fields(), depth + 1, rows);
    }
}

} // namespace

Entry::Entry(MessageClass const& known, ClassDescription description)
    : known(&known), description(std::move(description)), stem(fileStem(known)) {
    unfold(this->description.fields, 0, rows);
}

Type const* recordIn(Type const* type) { return inside(type, TypeKind::record); }
Type const* messageIn(Type const* type) { return inside(type, TypeKind::message); }

} // namespace Tolv::Tool::Catalogue
