#include <Corvex/platform/Version.h>

#include <iostream>

int main() {
    std::cout << "Corvex " << corvex::versionString << '\n';
}
