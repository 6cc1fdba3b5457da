// Helpers for tests that run on several ranks at once.
#pragma once

namespace zqtest {

/// Rank of this process in the world and the number of processes.
int WorldRank();
int WorldSize();

/// Collective: true when `ok` holds on every rank. Reduce before asserting, so that no
/// rank leaves a collective early.
bool AllRanks(bool ok);

} // namespace zqtest
