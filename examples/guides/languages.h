// languages.h: the numbers of the texts, the same in every language.
#pragma once

#define IDS_SIZE 10
#define IDS_PROGRESS 11
#define IDR_HELP 20
