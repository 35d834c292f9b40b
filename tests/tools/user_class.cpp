#include <tolv/msgs/families.h>
#include <tolv/msgs/message_helpers.h>

namespace {

using namespace Tolv;
using MetaData::operator""_key;

/// What a user's payload may be; no catalogue knows it.
struct Gauge : MetaData::MirroredObject {
    MetaData::Reflector<double> level{this, "level"_key, MetaData::Required, 0.5};
};

} // namespace

template class Tolv::Msgs::PayloadMessageHelper<Tolv::Msgs::App::AppMessage, Gauge, 0xEEEE>;
