#include <ZEL/serializer/reader/XmiReader.h>
#include <ZEL/values/Object.h>

/// Reads the file of its argument and ends.
int main(int count, char ** arguments) {
    return count == 2 && ZEL::Serializer::XmiReader().read(arguments[1]).isValid() ? 0 : 1;
}
