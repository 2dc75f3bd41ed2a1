#pragma once

#include "sim/orvo_sim_dispatcher.h"
#include "tests/support/Machine.h"

namespace orvo::test {

/// The simulated logging dispatcher: for its lifetime all records of the adapter are captured.
class DispatcherControl {
public:
    DispatcherControl();
    DispatcherControl(const DispatcherControl&) = delete;
    DispatcherControl& operator=(const DispatcherControl&) = delete;
    ~DispatcherControl();

    /// The records so far, "LEVEL LOGGER TEXT", which are then forgotten. Thread ids are T in them, and source
    /// lines N but for those that never change.
    static Lines take();
};

}   // namespace orvo::test
