#include <Corvex/cli/transcode/GpuDevice.h>

#include <utility>

#include <Corvex/platform/internal/ProcessWide.h>

namespace corvex::inline v0 {
namespace {

ProcessWide<GpuDeviceProvider>& provider() {
    // Never destroyed, so that destructors of static objects may still ask.
    static auto& holder = *new ProcessWide<GpuDeviceProvider>([] { return GpuDeviceProvider(); });
    return holder;
}

}  // namespace

GpuDevice::~GpuDevice() = default;

GpuDeviceProvider gpuDeviceProvider() { return provider().get(); }
void setGpuDeviceProvider(GpuDeviceProvider newProvider) { provider().set(std::move(newProvider)); }

}  // namespace corvex::inline v0
