#pragma once
// The program's numbered failures. They are thrown as the enum itself from deep inside a
// step transition and caught by the transition, which shows the matching message.

#include <cstdint>

namespace ampora {

enum class AnalysisFailure : std::uint32_t {
    TwoCurrentSources = 0x80045401,
    CannotSolve = 0x80045402,
    IdenticalParallelBranches = 0x80045403,
    DifferentParallelVoltages = 0x80045404,
};

} // namespace ampora
