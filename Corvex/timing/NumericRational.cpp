#include <Corvex/timing/NumericRational.h>

#include <nlohmann/json.hpp>

#include <Corvex/timing/MathematicalError.h>
#include <Corvex/timing/internal/decodeMember.h>

namespace corvex::inline v0 {

double NumericRational::quotient() const {
    if (!isDefined()) throw MathematicalError(MathematicalError::Case::divideByZero);
    return static_cast<double>(numerator_) / static_cast<double>(denominator_);
}

template <class JsonType>
void to_json(JsonType& json, const NumericRational& value) {
    json = Json{{"numerator", value.numerator()}, {"denominator", value.denominator()}};
}

template <class JsonType>
void from_json(const JsonType& coded, NumericRational& value) {
    const Json& json = coded;  // converted where it is of the other kind
    value = {decodeIntegerMember(json, "numerator"), decodeIntegerMember(json, "denominator")};
}

template CORVEX_EXPORT void to_json(Json&, const NumericRational&);
template CORVEX_EXPORT void to_json(nlohmann::json&, const NumericRational&);
template CORVEX_EXPORT void from_json(const Json&, NumericRational&);
template CORVEX_EXPORT void from_json(const nlohmann::json&, NumericRational&);

}  // namespace corvex::inline v0
