#pragma once

#include <concepts>
#include <initializer_list>
#include <type_traits>
#include <typeinfo>
#include <utility>
#include <vector>

#include <tolv/core/metadata/detail/replaced.h>
#include <tolv/core/metadata/diagnostics.h>
#include <tolv/fields/base64_encoder.h>

namespace Tolv::MetaData {

/// A field with a list of values.
///
/// It is written as a JSON array or, for `bool`, `int`, `double` and the complex types, as an
/// object with the content in base64 (`Base64Encoder`). A reader accepts either. `encodeBinary`
/// says which form is written; a field that was read from a plain array writes plain arrays from
/// then on.
///
/// Unlike a single-valued field, it keeps its content if a read fails, and prints a line to
/// standard output (see diagnostics.h).
template <class T>
class ReflectorArray : public ReflectorBase {
    static_assert(
        Detail::isEntryType<T>(),
        "a list holds values of the types that have a conversion (see SetAs), or records");

    static constexpr bool isEncodable = Detail::encodedTag<T> != 0;

public:
    /// An empty list, initialized if required. `encode` selects the encoded form; it has no effect
    /// on types without one.
    ReflectorArray(Owner const& owner, FieldOf<ListOf<T>> field, Presence required,
                   Flag encode = false)
        : ReflectorBase(owner, field.info(), required), encodeBinary_(bool(encode) && isEncodable) {
    }

    /// A list with content, initialized if required.
    ReflectorArray(Owner const& owner, FieldOf<ListOf<T>> field, Presence required,
                   std::vector<T> initial, Flag encode = false)
        : ReflectorArray(owner, field, required, encode) {
        value_ = std::move(initial);
    }
    /// The same for `{this, field<"k">, Required, {1, 2, 3}}`.
    template <class Entry = T>
    ReflectorArray(Owner const& owner, FieldOf<ListOf<T>> field, Presence required,
                   std::initializer_list<std::type_identity_t<Entry>> initial, Flag encode = false)
        : ReflectorArray(owner, field, required, std::vector<T>(initial), encode) {}

    /// The copy of a field in the copy of its record. The copy of a field on its own has no owner.
    ReflectorArray(ReflectorArray const&) = default;
    /// The same; the list is moved.
    ReflectorArray(ReflectorArray&&) = default;
    ~ReflectorArray() override = default;

    /// Whether the encoded form is written.
    [[nodiscard]] bool encodeBinary() const noexcept { return encodeBinary_; }

    /// The list.
    /// @throws Exception::InvalidOperation if the field is uninitialized.
    std::vector<T> const& operator()() const& {
        if (!initialized()) [[unlikely]]
            throwIfUninited("Tolv::MetaData::ReflectorArray::operator()()");
        return value_;
    }
    /// The list of a temporary field, by value. A template, so that it is instantiated only for the
    /// types that use it.
    template <class = void>
    std::vector<T> operator()() && {
        throwIfUninited("Tolv::MetaData::ReflectorArray::operator()()");
        return std::move(value_);
    }
    template <class = void>
    std::vector<T> operator()() const&& { ///< the same
        throwIfUninited("Tolv::MetaData::ReflectorArray::operator()()");
        return value_;
    }

    /// Writes the list under the field's key into `parent`, or nothing if the field is
    /// uninitialized.
    /// @throws Exception::InvalidParameter if the list is too large for the encoded form.
    void copyToMetaData(Element& parent) const override {
        if (!initialized())
            return;
        if constexpr (isEncodable) {
            if (encodeBinary_) {
                writeEncoded(parent[key()]);
                return;
            }
        }
        writePlain(parent[key()]);
    }

    /// Calls the most derived `assign(Element const&)`.
    /// @throws Exception::InvalidParameter if `parent` is not an object.
    void copyFromMetaData(Element const& parent) override {
        [[maybe_unused]] Object const& object = parent; // throws if it is not one
        assign(parent);
    }

    /// Stores a copy of the list.
    virtual void assign(std::vector<T> const& values) {
        store(values);
        init();
    }

    /// Reads the field from `parent`. A missing key empties the list and makes the field
    /// uninitialized. An element of the wrong kind, the encoded form of another type or an array
    /// with an unreadable entry leaves the field unchanged and prints a line.
    /// @throws Exception::InvalidOperation or Exception::InvalidParameter if the encoded form lacks
    /// a key or its text is invalid; the field is then unchanged.
    virtual void assign(Element const& parent) {
        auto const* const child = parent.find(key());
        if (child == nullptr) {
            value_.clear();
            uninit();
        } else if (child->isArray()) {
            encodeBinary_ = false;
            readPlain(child->array());
        } else if constexpr (isEncodable) {
            readEncoded(*child);
        } else {
            Diagnostics::arrayExpected();
        }
    }

    /// Extension: the list for changes in place; the field is initialized from now on.
    std::vector<T>& edit() & {
        init();
        return value_;
    }

    /// Copies the initialized flag, the list and the form in which it is written.
    ReflectorArray& operator=(ReflectorArray const& other) {
        ReflectorBase::operator=(other);
        encodeBinary_ = other.encodeBinary_;
        store(other.value_);
        return *this;
    }

    /// `assign`, for `record.field = list`.
    ReflectorArray& operator=(std::vector<T> const& values) {
        assign(values);
        return *this;
    }
    /// `assign`, for `record.field = {1, 2, 3}`.
    template <class Entry = T>
    ReflectorArray& operator=(std::initializer_list<std::type_identity_t<Entry>> values) {
        assign(std::vector<T>(values));
        return *this;
    }

protected:
    /// For a derived class that does not override `assign(std::vector<T> const&)`: lists that were
    /// read are then moved in instead of copied.
    void letListsMoveIn() noexcept { listsMoveIn_ = true; }

private:
    /// Stores a copy of `values`, which may be part of a record in this very list.
    void store(std::vector<T> const& values) {
        if constexpr (Record<T>) {
            std::vector<T> list(values);
            value_.swap(list);
            if (!list.empty())
                Detail::Replaced::keep(std::move(list));
        } else {
            value_ = values;
        }
    }

    void writePlain(Element& child) const {
        Array& array = child;
        auto const size = static_cast<unsigned int>(value_.size());
        if (size != value_.size())
            throw Exception::InvalidParameter("an array of " + std::to_string(value_.size()) +
                                              " entries is too large for the tree");
        array.clear(); // removes what remains of older entries
        array.resize(size);
        for (unsigned int i = 0; i < size; ++i) {
            if constexpr (Record<T>)
                value_[i].copyToMetaData(array[i]);
            else
                SetAs<T>(value_[i], array[i]);
        }
    }

    /// The three keys of `Base64Encoder`, without copying the text.
    template <class U = T>
    void writeEncoded(Element& child) const {
        child.setNull(); // removes an older list in either form
        SetAs<unsigned int>(Detail::encodedTag<U>, child["type"_key]);
        SetAs<unsigned long long>(value_.size(), child["len"_key]);
        if (!value_.empty())
            Detail::encodeElements(value_, child["base64"_key],
                                   typeid(*this) == typeid(ReflectorArray) ? this : nullptr);
    }

    void readPlain(Array const& array) {
        try {
            std::vector<T> read;
            if (!readEntries(array, read)) {
                Diagnostics::arrayCorrupt(key().text());
            } else if (listsMoveIn_ || typeid(*this) == typeid(ReflectorArray)) {
                value_ = std::move(read);
                init();
            } else {
                assign(read);
            }
        } catch (...) {
            Diagnostics::arrayCorrupt(key().text());
        }
    }

    /// False if an entry is of the wrong kind; a record may throw instead.
    static bool readEntries(Array const& array, std::vector<T>& read) {
        read.reserve(array.size());
        for (auto const& entry : array) {
            if constexpr (Record<T>) {
                readRecord(entry, read);
            } else if constexpr (std::is_same_v<T,
                                                bool>) { // its vector has no elements to refer to
                bool one = false;
                if (!TryGetAs(entry, one))
                    return false;
                read.push_back(one);
            } else if constexpr (std::is_same_v<T, std::string>) {
                // Constructed with its content: a handshake with two addresses is then read with
                // 4% fewer instructions.
                if (!entry.isString())
                    return false;
                read.emplace_back(entry.text());
            } else {
                if (!TryGetAs(entry, read.emplace_back()))
                    return false;
            }
        }
        return true;
    }

    /// Each entry of a list is a copy of the record that was read. Copying sets required fields
    /// without a value to the type's default, and refuses messages without a payload. If the record
    /// contains neither, the copy would be identical and is omitted. Records without a default
    /// constructor and payloads with custom conversion are always copied.
    template <Record R>
    static void readRecord(Element const& entry, std::vector<R>& read) {
        if constexpr (std::derived_from<R, MirroredObject> &&
                      requires { typename DefaultOf<R>::IsDefaultBuilt; }) {
            auto const doubtsBefore = Detail::copyDoubts();
            read.emplace_back().copyFromMetaData(entry);
            if (Detail::copyDoubts() == doubtsBefore) [[likely]]
                return;
            R const one(read.back());
            read.pop_back();
            read.push_back(one);
        } else {
            R one = DefaultOf<R>::make();
            one.copyFromMetaData(entry);
            read.push_back(std::as_const(one));
        }
    }

    /// The fields of `Base64Encoder`, without copying the text.
    template <class Form = Base64Encoder<T>>
    void readEncoded(Element const& child) {
        Form form;
        form.type.copyFromMetaData(child);
        form.len.copyFromMetaData(child);
        if (!Detail::isPacked<T> && form.type() != Detail::encodedTag<T>) {
            Diagnostics::wrongEncodedType();
            return;
        }
        auto const* const text = child.find("base64"_key);
        if (text != nullptr && text->isString()) {
            auto const view = text->text();
            form.decode(value_, &view);
        } else {
            form.decode(value_, nullptr);
        }
        init();
    }

    std::vector<T> value_;
    bool encodeBinary_ = false;
    bool listsMoveIn_ = false;
};

} // namespace Tolv::MetaData
