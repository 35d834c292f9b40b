#pragma once

#include <functional>

#include <common/dialogue.h>
#include <common/service.h>

/// @file
/// The `main` of a service and that of a client: options, connection, what to do with a failure.
namespace Example {

/// Waits at the socket of the command line for one client and serves it with what `offer` offers.
/// @return the exit status: 0 unless something failed, which is told on the standard error.
int serve(int argc, char** argv, std::function<void(Service&)> const& offer);

/// Connects to the socket of the command line, does `work`, and prints what crossed.
/// @return the exit status: 0 when everything was as it should be.
int converse(int argc, char** argv, std::function<void(Dialogue&)> const& work);

} // namespace Example
