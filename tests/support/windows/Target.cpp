// Target.cpp: tests of the platform that is there.
#include "support/Target.h"

const bool kelgen::test::isOurPlatform = false;
