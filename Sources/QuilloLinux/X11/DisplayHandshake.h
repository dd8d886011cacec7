#pragma once

namespace quillo {

/// Whether the display ($DISPLAY) answers within the seconds given. The library that connects has no time-out, and a
/// display server that is stopped accepts connections all the same: so the question is asked first, on a connection of
/// its own. A display that refuses the connection, or whose name nobody knows, counts as answering: the library finds
/// out by itself, and at once. Looking up a host's name takes the resolver's own time beside.
bool displayAnswers(double seconds);

}  // namespace quillo
