// A user's program that calls the third library only.
#include <ZEL/interchange/Interchange.h>

int main() {
    ZEL::Interchange::registerMetaModels();
    return 0;
}
