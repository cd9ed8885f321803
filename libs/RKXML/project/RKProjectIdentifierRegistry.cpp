#include "RKProjectIdentifierRegistry.h"
