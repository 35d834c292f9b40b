#pragma once

#include <common/service.h>

/// @file
/// What the instrument offers. Each function gives the service the handlers of one subject.
namespace Example {

void offerHandshake(Service& service);
void offerApplications(Service& service);
void offerScripts(Service& service);
void offerChassis(Service& service);
void offerHardware(Service& service);
void offerTriggers(Service& service);
void offerSelftests(Service& service);
void offerEngine(Service& service);
void offerForwarder(Service& service);
void offerEnd(Service& service);

} // namespace Example
