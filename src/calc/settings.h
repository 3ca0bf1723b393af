// What the process has set for all calculations (tavca_setwarningmode, tavca_setroomdamp).
#pragma once

namespace tavd {

// Level difference between sound power and room sound pressure, dB.
float room_damping();

}  // namespace tavd
