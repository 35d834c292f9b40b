#include <tolv/msgs/attrs/message_type_mapper.h>

#include <tolv/msgs/attrs/messages.h>

namespace Tolv::Msgs {

EnumStringsDefault<Identifier> const
    messageTypeMapper(Attrs::AttrMessage::MsgID(), "Unknown",
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

} // namespace Tolv::Msgs
