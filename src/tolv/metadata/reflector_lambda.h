#pragma once

#include <functional>
#include <string>
#include <utility>

#include <tolv/metadata/reflector.h>

namespace Tolv::MetaData {

/// A value field that asks before it takes a new value and tells afterwards. A value that is
/// refused leaves value and state as they are; so does a failed read, unlike in a plain field.
///
/// The functions belong to the field: a copied record keeps its own. They run on the thread of the
/// caller.
template <class T>
class ReflectorLambda : public Reflector<T, false, true> {
    using Base = Reflector<T, false, true>;
    using Value = ReflectorNoWriteParend<T, true>;

public:
    /// Asked before a value is stored: false refuses it, and what it throws goes to the caller of
    /// `assign`.
    using PreValue = std::function<bool(T const&)>;
    /// Called after each accepted assignment; its result is of no effect.
    using Post = std::function<bool(ReflectorLambda const&)>;
    /// Asked before a read from the parent's element: false refuses it.
    using PreMeta = std::function<bool(Element const&)>;

    /// A required field with an initial value, which is not checked. An empty function stands for
    /// the default of its place.
    ReflectorLambda(MirroredObject* owner, Key const& key, Parameter<T> initial,
                    PreValue preValue = {}, Post post = {}, PreMeta preMeta = {})
        : Base(owner, key, Optional, initial) {
        this->init();
        setFunctions(std::move(preValue), std::move(post), std::move(preMeta));
    }
    ReflectorLambda(MirroredObject* owner, std::string const& key, Parameter<T> initial,
                    PreValue preValue = {}, Post post = {}, PreMeta preMeta = {})
        : ReflectorLambda(owner, Key::intern(key), initial, std::move(preValue), std::move(post),
                          std::move(preMeta)) {}

    /// The same without a value: the field starts uninitialized.
    explicit ReflectorLambda(MirroredObject* owner, Key const& key, PreValue preValue = {},
                             Post post = {}, PreMeta preMeta = {})
        : Base(owner, key, Optional) {
        setFunctions(std::move(preValue), std::move(post), std::move(preMeta));
    }
    explicit ReflectorLambda(MirroredObject* owner, std::string const& key, PreValue preValue = {},
                             Post post = {}, PreMeta preMeta = {})
        : ReflectorLambda(owner, Key::intern(key), std::move(preValue), std::move(post),
                          std::move(preMeta)) {}

    ReflectorLambda(ReflectorLambda const&) = delete; ///< the functions may refer to their field
    ~ReflectorLambda() override = default;

    // Neither of the two is inlined: g++ 12 takes them for the likely target of virtual calls on
    // plain fields, and would warn of what its own guess reads there.

    /// Stores a value that is accepted. @throws what the functions throw.
    [[gnu::noinline]] void assign(T const& value) override {
        if (!preValue_(value))
            return;
        Value::assign(value);
        post_(*this);
    }

    /// As `ReflectorNoWriteParend::assign` of another type.
    template <Detail::Another<T> Given>
    void assign(Given&& given) {
        Value::assign(std::forward<Given>(given));
    }

    /// Reads the field from the object `parent`, if that is accepted. @throws what functions other
    /// than the defaults throw.
    [[gnu::noinline]] void assign(Element const& parent) override {
        if (!preMeta_(parent)) {
            Detail::reportKept();
            return;
        }
        Value::assign(parent);
        post_(*this);
    }

    /// Takes over value and state as a plain field does, through `assign`.
    ReflectorLambda& operator=(ReflectorLambda const& other) {
        Base::operator=(other);
        return *this;
    }
    /// `assign`, for `record.field = value`.
    ReflectorLambda& operator=(Parameter<T> value) {
        assign(valueOf<T>(value));
        return *this;
    }

    /// Accepts every value: what stands for an empty `PreValue`.
    static bool defaultPreValue(T const& /*value*/) { return true; }
    /// Does nothing: what stands for an empty `Post`.
    static bool defaultPost(ReflectorLambda const& /*field*/) { return true; }

    /// Whether `parent` holds a value of this field that the check of values accepts. A check that
    /// throws refuses.
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
        if (post || preMeta) // a copy asks neither for the same reason as a read
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
