#include "RKIntRange.h"

// Instantiated once here so that users of the library share the code.
template class RKRange<int>;
