#pragma once

#include <cstdint>
#include <optional>

#include <Corvex/platform/TaskPriority.h>

namespace corvex::inline v0 {

/// How much a piece of work matters to the user, as one number; the higher, the more urgent. Other raw values are legal
/// and mean nothing in particular. The numbers are those of TaskPriority where both have a name.
enum class QualityOfService : std::int64_t {
    /// Somebody is waiting for the next picture on a screen.
    userInteractive = 33,
    /// Somebody asked for it and waits for the result.
    userInitiated = 25,
    /// It may take minutes and shows its progress.
    utility = 17,
    /// Nobody sees it.
    background = 9,
    /// No statement: between the second and the third.
    defaultQuality = -1,
};

/// How much the work of a dispatch queue matters: a class, and a rank within it (0, or below for less). The rank is
/// carried and compared, but threads here do not go by it. A plain value.
struct DispatchQoS {
    /// The classes, most urgent first.
    enum class QoSClass : std::uint8_t {
        userInteractive,
        userInitiated,
        defaultClass,
        utility,
        background,
        unspecified
    };

    QoSClass qosClass = QoSClass::unspecified;
    int relativePriority = 0;

    /// The classes with the rank 0.
    static const DispatchQoS userInteractive, userInitiated, defaultQoS, utility, background, unspecified;

    /// Only the four named qualities without a relative priority have one of their own; everything else is the default.
    /// dispatchEquivalent() is the way back.
    [[nodiscard]] constexpr QualityOfService qualityOfService() const noexcept;

    friend constexpr bool operator==(const DispatchQoS&, const DispatchQoS&) noexcept = default;
};

inline constexpr DispatchQoS DispatchQoS::userInteractive{QoSClass::userInteractive};
inline constexpr DispatchQoS DispatchQoS::userInitiated{QoSClass::userInitiated};
inline constexpr DispatchQoS DispatchQoS::defaultQoS{QoSClass::defaultClass};
inline constexpr DispatchQoS DispatchQoS::utility{QoSClass::utility};
inline constexpr DispatchQoS DispatchQoS::background{QoSClass::background};
inline constexpr DispatchQoS DispatchQoS::unspecified{QoSClass::unspecified};

constexpr QualityOfService DispatchQoS::qualityOfService() const noexcept {
    if (*this == userInteractive) return QualityOfService::userInteractive;
    if (*this == userInitiated) return QualityOfService::userInitiated;
    if (*this == utility) return QualityOfService::utility;
    if (*this == background) return QualityOfService::background;
    return QualityOfService::defaultQuality;
}

/// `unspecified` for a raw value without a name.
[[nodiscard]] constexpr DispatchQoS::QoSClass dispatchEquivalentClass(QualityOfService quality) noexcept {
    using enum DispatchQoS::QoSClass;
    switch (quality) {
        case QualityOfService::userInteractive: return userInteractive;
        case QualityOfService::userInitiated: return userInitiated;
        case QualityOfService::utility: return utility;
        case QualityOfService::background: return background;
        case QualityOfService::defaultQuality: return defaultClass;
    }
    return unspecified;
}

/// The class of that quality, with rank 0.
[[nodiscard]] constexpr DispatchQoS dispatchEquivalent(QualityOfService quality) noexcept {
    return {dispatchEquivalentClass(quality), 0};
}

/// The priority with which a queue of that class posts its work. None where no quality is specified; a queue then takes
/// TaskPriority::medium.
[[nodiscard]] constexpr std::optional<TaskPriority> taskPriorityEquivalent(DispatchQoS::QoSClass qosClass) noexcept {
    using enum DispatchQoS::QoSClass;
    switch (qosClass) {
        case userInteractive: return TaskPriority::high;
        case userInitiated: return TaskPriority::userInitiated;
        case utility: return TaskPriority::utility;
        case background: return TaskPriority::background;
        case defaultClass: return TaskPriority::medium;
        case unspecified: break;
    }
    return std::nullopt;
}

/// None for a raw value without a name.
[[nodiscard]] constexpr std::optional<TaskPriority> taskPriorityEquivalent(QualityOfService quality) noexcept {
    return taskPriorityEquivalent(dispatchEquivalentClass(quality));
}

}  // namespace corvex::inline v0
