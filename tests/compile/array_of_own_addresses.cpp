// says: arrays move their elements bit by bit
#include <kelgen/framework/collections/Array.h>

#include <string>

void Check(CArray<std::string>& texts)
{
    texts.Add("text");
}
