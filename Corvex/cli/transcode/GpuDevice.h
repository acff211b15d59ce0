#pragma once

#include <cstdint>
#include <memory>

#include <Corvex/platform/Export.h>
#include <Corvex/platform/FunctionCore.h>

namespace corvex::inline v0 {

/// A device that can compute on pictures. The library knows no graphics interface: hosts that have such devices derive
/// their own class from this and set a provider that finds them.
class CORVEX_EXPORT GpuDevice {
public:
    virtual ~GpuDevice();
    /// The number by which "-gpu_trans" names the device.
    [[nodiscard]] virtual std::uint64_t registryID() const noexcept = 0;
};

/// Finds the device of a registry number; nullptr when there is none.
using GpuDeviceProvider = std::function<std::shared_ptr<GpuDevice>(std::uint64_t registryID)>;

/// The provider of the whole process; empty, which finds nothing, until a host sets one. Any thread.
[[nodiscard]] CORVEX_EXPORT GpuDeviceProvider gpuDeviceProvider();
CORVEX_EXPORT void setGpuDeviceProvider(GpuDeviceProvider provider);

}  // namespace corvex::inline v0
