#pragma once

/// Every constant that names a maker, container, recording format, codec or camera series.

#include <Corvex/exported/ORVCameraSeries.h>
#include <Corvex/exported/ORVMediaCorporation.h>
#include <Corvex/exported/ORVMediaFileContainer.h>
#include <Corvex/exported/ORVMediaRecordingFormat.h>
#include <Corvex/exported/ORVVideoCodec.h>
