#include <Corvex/concurrency/DataCoordinationError.h>

namespace corvex::inline v0 {

DataCoordinationError::DataCoordinationError(Case which)
    : Error(which == Case::addToClosedConduitError ? "an item was added to a closed conduit"
                                                   : "an item is not of the conduit's type"),
      case_(which) {}

DataCoordinationError::~DataCoordinationError() = default;

}  // namespace corvex::inline v0
