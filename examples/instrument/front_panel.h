#pragma once

#include <string>

namespace Example {

/// The script of the front panel: more than 64 KiB of text, with characters of one to four bytes.
/// The service sends it; the client knows it too, and compares what arrived.
std::string frontPanelScript();

} // namespace Example
