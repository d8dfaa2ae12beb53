#pragma once

// The two ports of the house's own servers. An attempt begins at the first one; behind a failure
// the next one goes to the other.
namespace house_ports {

inline constexpr int first = 6667;
inline constexpr int fallback = 8867;

} // namespace house_ports
