// The small files of the local widgets: colours, emoji and water. The first byte picks the file.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneCore/widgets/colour/ColourHistory.hpp"
#include "CorvaneCore/widgets/emoji/EmojiHistory.hpp"
#include "CorvaneCore/widgets/water/WaterLog.hpp"
#include "fuzz/FuzzSupport.hpp"

using namespace corvane;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    auto text = fuzz::text(data + 1, size - 1);
    switch (data[0] % 3) {
    case 0: fuzz::roundTrip(text, colourHistoryFromText, colourHistoryText); break;
    case 1: fuzz::roundTrip(text, emojiHistoryFromText, emojiHistoryText); break;
    default: fuzz::roundTrip(text, waterLogFromText, waterLogText); break;
    }
    return 0;
}
