// Interrupt.cpp: the mark that signals set.
#include "Interrupt.h"

#include <atomic>
#include <csignal>

namespace interrupt {

namespace {

std::atomic<bool> hasCome = false;

void Mark(int)
{
    hasCome = true;
}

}  // namespace

void Catch()
{
    std::signal(SIGINT, Mark);
    std::signal(SIGTERM, Mark);
}

bool HasCome()
{
    return hasCome;
}

}  // namespace interrupt
