#pragma once

#include "kills/subject.h"

// Each prints how much it tried, and throws a runtime error at the first run that does not end as
// it must.

namespace quenfold::kills {

/// Kills the replacement at each of its calls, and the look at what is left at each of its own, and
/// the look at what that leaves, until nothing new comes of it. What a kill leaves must be whole
/// once it was looked at, and a killed look must not change what it comes to.
void killRuns(const Subject& subject, const FolderState& before);

/// Kills the next replacement, at each of its calls, in every state that a killed one leaves.
void killNextRuns(const Subject& subject, const FolderState& before);

/// Lets each call of the replacement fail, once or from then on. When it succeeds all the same, the
/// new files are there; when not, it says why in one line, and has changed nothing unless that line
/// says that the next run finishes it.
void failCalls(const Subject& subject, const FolderState& before);

/// Lets each call of the look fail, at what a killed replacement leaves. It must not change what
/// comes of that.
void failLooks(const Subject& subject, const FolderState& before);

/// Cuts the power before each call of the replacement, and of the look and the replacement that
/// follow a killed one. Of what was not synced until then any part may be on the disk.
void cutPower(const Subject& subject, const FolderState& before);

}  // namespace quenfold::kills
