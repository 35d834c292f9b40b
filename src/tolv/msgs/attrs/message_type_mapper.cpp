#include <tolv/msgs/attrs/message_type_mapper.h>

#include <tolv/msgs/attrs/messages.h>

namespace Tolv::Msgs {

namespace {

EnumStringsDefault<Identifier> const
    mapper(Attrs::AttrMessage::MsgID(), "Unknown",
           {
               {Attrs::LongMessage::MsgID(), "long"},
               {Attrs::DoubleMessage::MsgID(), "double"},
               {Attrs::BoolMessage::MsgID(), "boolean"},
               {Attrs::StringMessage::MsgID(), "string"},
               {Attrs::DoubleTraceMessage::MsgID(), "doublesequencetrace"},
               {Attrs::ComplexTraceMessage::MsgID(), "doublecomplexsequencetrace"},
               {Attrs::ComplexBoolTraceMessage::MsgID(), "booleancomplexsequencetrace"},
               {Attrs::BoolTraceMessage::MsgID(), "booleansequencetrace"},
               {Attrs::EnumMessage::MsgID(), "enumeration"},
               {Attrs::DoubleSequenceMessage::MsgID(), "doublesequence"},
               {Attrs::BoolSequenceMessage::MsgID(), "booleansequence"},
           });

} // namespace

// If the library is loaded twice, from different paths, the two copies share their exported
// symbols. An exported object would then be constructed and destroyed twice; a reference needs
// neither.
constinit EnumStringsDefault<Identifier> const& messageTypeMapper = mapper;

} // namespace Tolv::Msgs
