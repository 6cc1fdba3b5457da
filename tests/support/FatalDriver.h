// A driver for process-ending cases: each case is a function that must not return.
#pragma once

#include <functional>
#include <map>
#include <string>

namespace zqtest {

using FatalCases = std::map<std::string, std::function<void()>>;

/// Brings MPI up, runs the case named by argv[1] and, should it return, prints
/// "fatal case returned" and exits with status 0 so that the check fails.
int RunFatalCase(int argc, char **argv, FatalCases const &cases);

} // namespace zqtest
