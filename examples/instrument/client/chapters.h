#pragma once

#include <common/dialogue.h>

/// @file
/// The chapters of a morning's work with the instrument; those about attributes are in
/// attributes/analyzer.h.
namespace Example {

void handshake(Dialogue& dialogue);
void applications(Dialogue& dialogue);
void scripts(Dialogue& dialogue);
void chassis(Dialogue& dialogue);
void hardware(Dialogue& dialogue);
void selftests(Dialogue& dialogue);
void triggers(Dialogue& dialogue);
void engine(Dialogue& dialogue);
void forwarder(Dialogue& dialogue);
void failures(Dialogue& dialogue);
void end(Dialogue& dialogue);

} // namespace Example
