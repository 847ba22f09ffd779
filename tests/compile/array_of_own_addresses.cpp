// array_of_own_addresses.cpp: elements that keep their own address.
// says: arrays move their elements bit by bit
#include <kelgen/framework/collections/Array.h>

#include <string>

void Check(CArray<std::string>& texts)
{
    texts.Add("text");
}
