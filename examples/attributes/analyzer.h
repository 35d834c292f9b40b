#pragma once

#include <complex>
#include <vector>

#include <common/dialogue.h>
#include <common/service.h>

/// @file
/// A handful of attributes of a spectrum analyzer: "frequency" and "span" with limits, "mode" with
/// a disabled entry, "label" with the characters that it takes, "temperature", which changes by
/// itself, and "trace".
namespace Example {

/// Serves these attributes.
void offerAnalyzer(Service& service);

/// The samples of "trace": the service sends them; the client knows them too, and compares.
std::vector<std::complex<double>> simulatedSamples();

// What a client does with them.
void readAttributes(Dialogue& dialogue);
void setAttributes(Dialogue& dialogue);

} // namespace Example
