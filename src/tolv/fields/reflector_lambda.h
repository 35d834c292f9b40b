#pragma once

#include <functional>
#include <string>
#include <utility>

#include <tolv/fields/reflector.h>

namespace Tolv::MetaData {

/// A single-valued field that calls a function before it accepts a new value, and another
/// afterwards. If a value is rejected or a read fails, value and state do not change, unlike in a
/// plain field.
///
/// The functions belong to the field: a copied record keeps its own. They run on the thread of the
/// caller.
template <class T>
class ReflectorLambda : public Reflector<T, false, true> {
    using Base = Reflector<T, false, true>;
    using Value = ReflectorNoWriteParend<T, true>;

public:
    /// Called before a value is stored: false rejects the value. Its exceptions reach the caller of
    /// `assign`.
    using PreValue = std::function<bool(T const&)>;
    /// Called after each accepted assignment; the result is ignored.
    using Post = std::function<bool(ReflectorLambda const&)>;
    /// Called before a read with the element to read from: false rejects the read.
    using PreMeta = std::function<bool(Element const&)>;

    /// A required field with an initial value, which is not checked. An empty function stands for
    /// the corresponding default.
    ReflectorLambda(Owner const& owner, FieldOf<T> field, Parameter<T> initial,
                    PreValue preValue = {}, Post post = {}, PreMeta preMeta = {})
        : Base(owner, field, Optional, initial) {
        this->init();
        setFunctions(std::move(preValue), std::move(post), std::move(preMeta));
    }

    /// The same without a value: the field starts uninitialized.
    explicit ReflectorLambda(Owner const& owner, FieldOf<T> field, PreValue preValue = {},
                             Post post = {}, PreMeta preMeta = {})
        : Base(owner, field, Optional) {
        setFunctions(std::move(preValue), std::move(post), std::move(preMeta));
    }

    // The functions may refer to their field, so a record with such a field has a copy constructor
    // of its own: `R(R const& other) : R() { *this = other; }`.
    ReflectorLambda(ReflectorLambda const&) = delete;
    ~ReflectorLambda() override = default;

    // The two virtual functions are not inlined. g++ 12 takes them for the likely target of virtual
    // calls on plain fields, and would warn about the reads of its own speculative code.

    /// Stores a value if it is accepted.
    /// @throws what the functions throw.
    [[gnu::noinline]] void assign(T const& value) override {
        if (!preValue_(value))
            return;
        Value::assign(value);
        post_(*this);
    }

    /// Like the overload of `ReflectorNoWriteParend::assign` for another type.
    template <Detail::Another<T> Given>
    void assign(Given&& given) {
        Value::assign(std::forward<Given>(given));
    }

    /// Reads the field from the object `parent`, if this is accepted.
    /// @throws what functions other than the defaults throw.
    [[gnu::noinline]] void assign(Element const& parent) override {
        if (!preMeta_(parent)) {
            Detail::reportKept();
            return;
        }
        Value::assign(parent);
        post_(*this);
    }

    /// Copies value and state like a plain field, through `assign`.
    ReflectorLambda& operator=(ReflectorLambda const& other) {
        Base::operator=(other);
        return *this;
    }
    /// `assign`, for `record.field = value`.
    ReflectorLambda& operator=(Parameter<T> value) {
        assign(valueOf<T>(value));
        return *this;
    }

    /// Accepts every value; used in place of an empty `PreValue`.
    static bool defaultPreValue(T const& /*value*/) { return true; }
    /// Does nothing; used in place of an empty `Post`.
    static bool defaultPost(ReflectorLambda const& /*field*/) { return true; }

    /// Whether `parent` contains a value for this field that the value check accepts. A check that
    /// throws rejects the value.
    [[nodiscard]] bool defaultPreMeta(Element const& parent) const {
        auto const* const child = parent.find(this->key());
        T value{};
        try {
            return child != nullptr && Detail::read(*child, value) && preValue_(value);
        } catch (...) {
            Detail::reportSwallowed();
            return false;
        }
    }

private:
    void setFunctions(PreValue preValue, Post post, PreMeta preMeta) {
        this->makeRequired();
        if (post || preMeta) // their effect on a copy may differ from that on a read
            Detail::noteCopyDoubt();
        preValue_ = preValue ? std::move(preValue) : defaultPreValue;
        post_ = post ? std::move(post) : defaultPost;
        if (preMeta)
            preMeta_ = std::move(preMeta);
        else
            preMeta_ = [this](Element const& parent) { return defaultPreMeta(parent); };
    }

    PreValue preValue_;
    Post post_;
    PreMeta preMeta_;
};

} // namespace Tolv::MetaData
