// Target.cpp: tests of our own platform.
#include "support/Target.h"

const bool kelgen::test::isOurPlatform = true;
