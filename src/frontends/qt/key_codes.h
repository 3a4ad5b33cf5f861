#pragma once

namespace tarvo::qt {

// The classic code of a key, as windows' key handlers know it (112 for F1, 13 for Enter, letters
// and digits by their capital character), for a value of Qt::Key; 0 for a key without one.
int ClassicKeyCode(int key, bool fromKeypad);

}  // namespace tarvo::qt
