#include <Corvex/timing/NumericRational.h>

#include <nlohmann/json.hpp>

#include <Corvex/timing/MathematicalError.h>
#include <Corvex/timing/decodeMember.h>

namespace corvex::inline v0 {

double NumericRational::quotient() const {
    if (!isDefined()) throw MathematicalError(MathematicalError::Case::divideByZero);
    return static_cast<double>(numerator_) / static_cast<double>(denominator_);
}

void to_json(Json& json, const NumericRational& value) {
    json = Json{{"numerator", value.numerator()}, {"denominator", value.denominator()}};
}

void from_json(const Json& json, NumericRational& value) {
    value = {decodeIntegerMember(json, "numerator"), decodeIntegerMember(json, "denominator")};
}

}  // namespace corvex::inline v0
