#include <tolv/msgs/introspection/description.h>

#include <cxxabi.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iomanip>
#include <map>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <tolv/messages.h>

#include "support/golden.h"
#include "support/messages.h"
#include "support/trees.h"

namespace Tolv::Msgs::Introspection {
namespace {

using MetaData::Element;
using namespace Tolv::Testing;

// ---- The approved catalogue --------------------------------------------------------------------

/// The wire format of all classes, as in golden/catalogue.txt: each class with what a new message
/// writes, then each record with its fields.
class Told {
public:
    std::string text() {
        for (auto const& row : catalogue()) {
            auto const message = row.make();
            lines_ << "0x" << std::hex << std::setw(16) << std::setfill('0') << row.id << std::dec
                   << ' ' << row.fullAlias() << ": " << row.className << " of "
                   << (row.payload.empty() ? "nothing" : row.payload) << "\n  "
                   << nameOf(classOf(*message)) << "\n  " << written(*message) << '\n';
            addFields(describe(row.id)->fields);
        }
        while (!records_.empty()) {
            auto const record = *records_.begin();
            records_.erase(records_.begin());
            if (!done_.insert(record.first).second)
                continue;
            lines_ << record.first << (record.second->strict ? ", all or nothing" : "") << '\n';
            addFields(record.second->fields());
        }
        return lines_.str();
    }

private:
    static std::string nameOf(std::type_info const& type) {
        std::unique_ptr<char, decltype(&std::free)> const name(
            abi::__cxa_demangle(type.name(), nullptr, nullptr, nullptr), &std::free);
        return std::regex_replace(name.get(), std::regex("Tolv::Msgs::"), "");
    }

    /// "key: type; required; default; the form of an encoded list; unit; words".
    void addFields(std::vector<FieldDescription> const& fields) {
        for (auto const& field : fields) {
            auto const* type = field.type;
            lines_ << "    " << field.key << ": " << type->name
                   << (field.required ? "; required" : "; optional");
            if (field.defaultValue)
                lines_ << "; " << textOf(*field.defaultValue);
            if (type->encodedTag != 0)
                lines_ << "; base64 " << type->encodedTag;
            if (!field.unit.empty())
                lines_ << "; " << field.unit;
            if (!field.literals.empty())
                lines_ << (field.closed ? "; one of" : "; such as");
            for (auto const& literal : field.literals)
                lines_ << ' ' << literal.word << '=' << literal.value;
            lines_ << '\n';
            while (type->element != nullptr)
                type = type->element;
            if (type->kind == TypeKind::record)
                records_.emplace(type->name, type);
        }
    }

    std::ostringstream lines_;
    std::map<std::string, Type const*> records_; ///< still to be told of
    std::set<std::string> done_;
};

TEST(Introspection, TheCatalogueIsAsApproved) {
    std::ifstream file(goldenFolder / "catalogue.txt");
    std::istringstream found(Told().text());
    auto const copy = testing::TempDir() + "catalogue.txt";
    std::ofstream(copy) << found.str();
    std::string approved;
    std::string line;
    for (int number = 1; std::getline(found, line); ++number) {
        ASSERT_TRUE(std::getline(file, approved)) << "more than approved: " << line;
        ASSERT_EQ(line, approved) << "catalogue.txt:" << number << "; " << copy << " is as it is";
    }
    EXPECT_FALSE(std::getline(file, approved)) << "no longer there: " << approved;
}

// ---- All classes, against what the classes themselves write and read ---------------------------

/// A new message writes what its description says, key by key and in order.
void expectDefaults(std::vector<FieldDescription> const& fields, Element const& written,
                    std::string const& path) {
    std::vector<std::string> keys;
    for (auto const& field : fields) {
        auto const* const value = written.find(field.key);
        ASSERT_EQ(field.defaultValue.has_value(), value != nullptr) << path << '.' << field.key;
        EXPECT_TRUE(value != nullptr || !field.required) << path << '.' << field.key;
        if (value == nullptr)
            continue;
        keys.push_back(field.key);
        EXPECT_TRUE(*field.defaultValue == *value) << path << '.' << field.key;
        if (field.type->kind == TypeKind::record)
            expectDefaults(field.type->fields(), *value, path + '.' + field.key);
    }
    std::vector<std::string> inOrder;
    for (auto const& member : written.object())
        inOrder.emplace_back(member.key());
    EXPECT_EQ(keys, inOrder) << path;
}

TEST(Introspection, DefaultsAreWhatAMessageWritesAsItIsBuilt) {
    for (auto const& row : catalogue()) {
        auto fields = describe(row.id)->fields;
        for (auto& field : fields) // only the sender knows a required address
            field.required = field.required && field.key != "Destination";
        expectDefaults(fields, parsed(written(*row.make())), row.fullAlias());
    }
}

// ---- Meanings ----------------------------------------------------------------------------------

/// Calls `visit(field, record)` for each field of all classes, of nested records once.
template <class Visit>
void forEachField(Visit const& visit) {
    std::set<std::string> done;
    std::vector<Type const*> open;
    auto const addAll = [&](std::vector<FieldDescription> const& fields,
                            std::string const& record) {
        for (auto const& field : fields) {
            visit(field, record);
            auto const* type = field.type;
            while (type->element != nullptr)
                type = type->element;
            if (type->kind == TypeKind::record && done.insert(type->name).second)
                open.push_back(type);
        }
    };
    for (auto const& row : catalogue())
        addAll(describe(row.id)->fields, row.fullAlias());
    while (!open.empty()) {
        auto const* const type = open.back();
        open.pop_back();
        addAll(type->fields(), type->name);
    }
}

TEST(Introspection, EveryFieldSaysWhatItMeans) {
    std::map<std::string, std::string> keyOf;
    forEachField([&](FieldDescription const& field, std::string const& record) {
        auto const where = record + '.' + field.key;
        EXPECT_GE(field.doc.size(), 10U) << where << ": " << field.doc;
        EXPECT_NE(field.doc.back(), '.') << where;
        auto const [known, isNew] = keyOf.try_emplace(field.doc, field.key);
        EXPECT_EQ(known->second, field.key) << where << " has the text of another key";
    });
    EXPECT_GT(keyOf.size(), 120U);
}

bool fits(Type const& type, std::string const& example) {
    if (type.kind == TypeKind::text)
        return true;
    if (type.kind == TypeKind::word)
        return std::any_of(type.literals.begin(), type.literals.end(),
                           [&](auto const& literal) { return literal.word == example; });
    auto const value = parsed(example);
    switch (type.kind) {
    case TypeKind::boolean:
        return value.kind() == MetaData::Kind::boolean;
    case TypeKind::integer: {
        long long number = 0;
        return MetaData::TryGetAs(value, number) && number >= type.minimum &&
               (number < 0 || static_cast<unsigned long long>(number) <= type.maximum);
    }
    case TypeKind::number: {
        double number = 0;
        return MetaData::TryGetAs(value, number);
    }
    default:
        return value.isArray() || (value.isObject() && type.kind == TypeKind::record);
    }
}

TEST(Introspection, ExamplesFitTheirFields) {
    int count = 0;
    forEachField([&](FieldDescription const& field, std::string const& record) {
        if (field.example.empty())
            return;
        ++count;
        EXPECT_TRUE(fits(*field.type, field.example))
            << record << '.' << field.key << ": " << field.example;
    });
    EXPECT_GT(count, 30);
}

// ---- Classes that are not of this library ------------------------------------------------------

struct Inner : MirroredObject {
    Reflector<double> width{this, field<"width", Unit{"mm"}, Doc{"of the slit"}, Example{"0.5"}>,
                            Optional};
};

struct Probe : MirroredObject {
    Reflector<int> depth{this, field<"depth", Within{-5, 5}, Words{"0 open | 1 shut"}>, Required,
                         7};
    ReflectorArray<Inner> inner{this, field<"inner">, Required};
    ReflectorArray<Probe> probes{this, "probes", Optional}; ///< of its own kind, with a plain key
};

using ProbeMessage = PayloadMessageHelper<Attrs::AttrMessage, Probe, 60000>;

TEST(Introspection, KnowsClassesOfOthersWithoutBeingTold) {
    EXPECT_FALSE(describe(ProbeMessage::MsgID())) << "not registered";
    Message::Registrar<ProbeMessage> const registrar(ProbeMessage::MsgID());
    auto const fields = describe(ProbeMessage::MsgID())->payload();
    ASSERT_EQ(fields.size(), 3U);
    auto const& depth = fields[0];
    EXPECT_EQ(depth.key + ' ' + depth.type->name + ' ' + textOf(*depth.defaultValue),
              "depth int 7");
    EXPECT_EQ(depth.range, std::pair(-5LL, 5LL));
    ASSERT_EQ(depth.literals.size(), 2U);
    EXPECT_EQ(depth.literals[1].word, "shut");
    EXPECT_FALSE(depth.closed);
    auto const width = fields[1].type->element->fields().at(0);
    EXPECT_EQ(width.unit + '|' + width.doc + '|' + width.example, "mm|of the slit|0.5");
    EXPECT_EQ(fields[2].type->element, &describe<Probe>()) << "describes itself";
}

struct Silent : SerializablePayloadInterface {
    void copyToMetaData(Element& element) const override {
        MetaData::SetAs<bool>(true, element["s"]);
    }
    void copyFromMetaData(Element const& /*element*/) override {}
};

struct Twice : MirroredObject {
    Reflector<int> one{this, field<"k">, Required};
    Reflector<int> other{this, field<"k">, Required};
};

/// A field class that does not say what its values are.
struct Wordless : MetaData::ReflectorBase {
    explicit Wordless(MetaData::Owner const& owner) : ReflectorBase(owner, "w", Required) {}
    void copyToMetaData(Element& /*parent*/) const override {}
    void copyFromMetaData(Element const& /*parent*/) override {}
};

struct HoldsWordless : MirroredObject {
    Wordless field{this};
};

TEST(Introspection, RefusesWhatDoesNotDescribeItself) {
    struct Row {
        Type const& type;
        std::string text;
    };
    for (auto const& row :
         {Row{describe<Silent>(), "has custom conversion and no table of its keys"},
          Row{describe<Twice>(), "has the key k twice"},
          Row{describe<HoldsWordless>(), "the field w is of a class that does not say"}})
        EXPECT_NE(
            thrownBy<Exception::InvalidOperation>([&] { (void)row.type.fields(); }).find(row.text),
            std::string::npos)
            << row.text;
}

} // namespace
} // namespace Tolv::Msgs::Introspection
