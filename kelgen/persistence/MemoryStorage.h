// MemoryStorage.h: CMemoryStorage and CMemoryStorageContainer, which lie a floor below: conversions of text fill them too.
#pragma once

#include <kelgen/containers/MemoryStorage.h>
