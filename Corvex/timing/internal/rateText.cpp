#include <Corvex/timing/internal/rateText.h>

#include <Corvex/platform/DoubleText.h>

namespace corvex::inline v0 {

std::string wholeOrHundredths(double rate) {
    std::string text = fixedText(rate, 2);
    if (text.ends_with(".00")) text.resize(text.size() - 3);
    return text;
}

}  // namespace corvex::inline v0
