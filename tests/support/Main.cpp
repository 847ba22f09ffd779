// Main.cpp: the test programs' main function. Each process works in a fresh home and scratch folder of its own.
#include "support/Scratch.h"

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    const kelgen::test::ScratchHome home;
    return RUN_ALL_TESTS();
}
