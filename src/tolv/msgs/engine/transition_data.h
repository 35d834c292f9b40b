#pragma once

#include <memory>
#include <vector>

#include <tolv/core/msgs/message.h>
#include <tolv/msgs/payload_interface.h>
#include <tolv/msgs/record.h>

namespace Tolv::Msgs::Engine {

/// Asks an engine for a transition: an event, with any messages as its parameters.
class TOLV_MESSAGES_API TransitionData : public MirroredObject {
public:
    /// The parameters, none of them null, shared with whoever else holds them: copies of the list
    /// hold the same messages. They travel as whole messages and come back as their own classes.
    class TOLV_MESSAGES_API ParamList : public std::vector<std::shared_ptr<Message>>,
                                        public SerializablePayloadInterface {
    public:
        using std::vector<std::shared_ptr<Message>>::vector;

        /// @throws Exception::InvalidOperation when a parameter is null.
        void copyToMetaData(MetaData::Element& element) const override;
        /// Releases the messages and reads those of `element`.
        /// @throws Exception::InvalidParameter when `element` is no array; the messages then stay.
        /// Exception::InvalidOperation when an entry is no message or its class is unknown; the
        /// list is then empty.
        void copyFromMetaData(MetaData::Element const& element) override;
    };

    /// Which transition, as the engine numbers them.
    Reflector<int> event{this, "event"_key, Required, 1};
    Reflector<ParamList> param{this, "param"_key, Required}; ///< what it needs

    TransitionData() = default;
    TransitionData(TransitionData const& other) : TransitionData() { *this = other; }
    TransitionData& operator=(TransitionData const&) = default;

    /// Whether there is a parameter with this index.
    /// @throws Exception::InvalidOperation when "param" did not read.
    [[nodiscard]] bool hasParam(unsigned int index) const { return index < param().size(); }
};

} // namespace Tolv::Msgs::Engine
