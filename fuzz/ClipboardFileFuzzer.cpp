// The encrypted clipboard history, opened with a fixed key. The first byte picks what the rest
// is: the file's bytes as they lie on disk, or a history text that is sealed with the key first,
// so that the decoder behind the cipher is reached. Only the cipher's and the decoder's own errors
// may escape; a history that opens comes back unchanged from a file sealed anew.

#include "CorvaneCore/support/DecodingError.hpp"
#include "CorvaneStorage/widgets/clipboard/ClipboardCrypto.hpp"
#include "fuzz/FuzzSupport.hpp"

#include <cmath>
#include <numeric>

using namespace corvane;

namespace {

const Bytes& key() {
    static const Bytes bytes = [] {
        Bytes made(ClipboardSealing::keyLength);
        std::iota(made.begin(), made.end(), std::uint8_t{1});
        return made;
    }();
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    Bytes file;
    if (data[0] % 2 == 0) {
        file.assign(data + 1, data + size);
    } else {
        // The history is never empty text, and the file format wants a byte of it.
        if (size == 1) return 0;
        ClipboardSealing::Nonce nonce{};
        nonce[0] = data[0];
        file = ClipboardSealing::seal(fuzz::text(data + 1, size - 1), key(), nonce);
    }

    std::vector<ClipboardItem> items;
    try {
        items = decodeClipboardFile(file, key());
    } catch (const ClipboardCryptoError&) {
        // A sealed text always opens: only the decoder behind the cipher may refuse it.
        FUZZ_CHECK(data[0] % 2 == 0);
        return 0;
    } catch (const DecodingError&) {
        return 0;
    }
    for (const auto& item : items) {
        FUZZ_CHECK(std::isfinite(item.capturedAt.sinceReferenceDate));
        item.previewLine();
        item.maskedLine();
    }
    FUZZ_CHECK(decodeClipboardFile(encodeClipboardFile(items, key()), key()) == items);
    FUZZ_CHECK(clipboardHistoryFromText(clipboardHistoryText(items)) == items);
    return 0;
}
