// Start.cpp: a program that does nothing; what it is linked with is loaded nevertheless.
int main() {}
