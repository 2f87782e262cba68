#pragma once

#include "simulation/simulated_machine.h"

/// The simulated machine under the name of the tests.
namespace veloran::test {

using veloran::MemoryFiles;
using veloran::MemorySettings;
using veloran::ScriptedConnection;
using veloran::ScriptedHttp;
using veloran::ScriptedLocation;
using veloran::ScriptedNetwork;
using veloran::SimulatedLoop;
using veloran::SimulatedMachine;
using veloran::SimulatedWorkers;

}  // namespace veloran::test
