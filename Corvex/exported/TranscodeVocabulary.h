#pragma once

/// Every flag and value constant of the transcode command line. Nothing else spells one.
/// For what writes, reads or documents whole command lines; it takes as long to compile as all of them together. What deals
/// with one flag includes the header of its family: flags end in ArgumentFlag.h, the values of a flag in Value.h.
/// All are constants without code at start-up; any text is legal beside the known ones, of which each family lists its own
/// in allCases().
/// `corvex vocabulary` prints all of them, with what each asks of a job.

#include <Corvex/exported/OAVArriLookValues.h>
#include <Corvex/exported/OAVGpuPlatformValue.h>
#include <Corvex/exported/OAVSourceValue.h>
#include <Corvex/exported/OAVTranscodeArgumentAspectRatioValue.h>
#include <Corvex/exported/OAVTranscodeArgumentAudioChannelLayoutValue.h>
#include <Corvex/exported/OAVTranscodeArgumentAudioFormatValue.h>
#include <Corvex/exported/OAVTranscodeArgumentColorMatrixValue.h>
#include <Corvex/exported/OAVTranscodeArgumentColorSpaceValue.h>
#include <Corvex/exported/OAVTranscodeArgumentColorTransferFunctionValue.h>
#include <Corvex/exported/OAVTranscodeArgumentFileFormatValue.h>
#include <Corvex/exported/OAVTranscodeArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeArgumentOverlayAnchorValue.h>
#include <Corvex/exported/OAVTranscodeArgumentVideoCodecValue.h>
#include <Corvex/exported/OAVTranscodeArriLookArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeAudioArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeCliCommand.h>
#include <Corvex/exported/OAVTranscodeEngineValue.h>
#include <Corvex/exported/OAVTranscodePresetValue.h>
#include <Corvex/exported/OAVTranscodeTimecodeArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeVideoArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeWatermarkFileArgumentFlag.h>
#include <Corvex/exported/OAVTranscodeWatermarkTextArgumentFlag.h>
#include <Corvex/exported/OAVUnifiedCodecDecoderValue.h>
