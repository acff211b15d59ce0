#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace corvex::bench {

constexpr std::size_t frameWidth = 1920, frameHeight = 1080;
constexpr std::size_t framePixels = frameWidth * frameHeight;

/// A .cube file of a smooth look, or of random colours, made once for a run and removed at its end.
const std::filesystem::path& cubeFile(std::size_t pointCount, bool isRandom = false);

/// Interleaved RGB or RGBA numbers from 0 to 1: a soft picture with a little noise, or colours at random.
std::vector<float> picture(std::size_t channelCount, bool isRandom = false);

/// The same as code values.
std::vector<std::uint16_t> codePicture(std::size_t channelCount, unsigned bitDepth, bool isRandom = false);

}  // namespace corvex::bench
