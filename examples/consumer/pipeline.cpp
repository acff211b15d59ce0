#include <proto/templateMessages.h>

#include <iostream>

/// Prints the message in which a host asks the cloud service for ready-made proxies, as protobuf writes it for people.
int main() {
    std::cout << corvex::templatePipeline(corvex::TranscodeVideoOptionsTemplate::h264).DebugString();
    return 0;
}
