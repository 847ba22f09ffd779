// languages.h: the numbers of the texts. Those of a language are a step higher than those of the one before.
#pragma once

#define LANGUAGE_STEP 1000

#define IDS_SIZE 10
#define IDS_PROGRESS 11
#define IDR_HELP 20
