#pragma once

namespace quillo {

/// Whether the display ($DISPLAY) answers within the seconds given. The library that connects has no time-out, and a
/// display server that is stopped accepts connections all the same: so the question is asked first, on a connection of
/// its own. A display that cannot be connected to at all, or that lies on another machine, counts as answering: the
/// library finds out by itself, and at once or within the network's own time-outs.
bool displayAnswers(double seconds);

}  // namespace quillo
