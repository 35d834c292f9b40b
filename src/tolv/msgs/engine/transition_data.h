#pragma once

#include <memory>
#include <vector>

#include <tolv/core/msgs/message.h>
#include <tolv/msgs/payload_interface.h>
#include <tolv/msgs/record.h>

namespace Tolv::Msgs::Engine {

/// Requests a transition of an engine: an event, with any messages as parameters.
class TOLV_MESSAGES_API TransitionData : public MirroredObject {
public:
    /// The parameters. None is null. Copies of the list share the messages. Each parameter is
    /// written as a whole message and read back as an object of its own class.
    class TOLV_MESSAGES_API ParamList : public std::vector<std::shared_ptr<Message>>,
                                        public SerializablePayloadInterface {
    public:
        using std::vector<std::shared_ptr<Message>>::vector;

        /// @throws Exception::InvalidOperation if a parameter is null.
        void copyToMetaData(MetaData::Element& element) const override;
        /// Releases the messages and reads those of `element`.
        /// @throws Exception::InvalidParameter if `element` is not an array; the messages are then
        /// unchanged. Exception::InvalidOperation if an entry is not a message or its class is
        /// unknown; the list is then empty.
        void copyFromMetaData(MetaData::Element const& element) override;
    };

    Reflector<int> event{
        this,
        field<"event", Doc{"the event that causes the transition, in the engine's numbering"},
              Example{"1"}>,
        Required, 1};
    Reflector<ParamList> param{
        this, field<"param", Doc{"the parameters of the event, each a whole message of any class"}>,
        Required};

    /// Whether a parameter with this index exists.
    /// @throws Exception::InvalidOperation if "param" is uninitialized.
    [[nodiscard]] bool hasParam(unsigned int index) const { return index < param().size(); }
};

} // namespace Tolv::Msgs::Engine
