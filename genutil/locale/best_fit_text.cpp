#include "genutil/locale/best_fit_text.h"

#include "genutil/mbutil/best_fit.h"

namespace genutil {

namespace {

class NearestText {
  public:
    NearestText(const CodePage& page, char* out, std::size_t size)
        : m_page(page), m_begin(out), m_at(out), m_end(out + size) {}

    bool Put(std::uint16_t character) {
        if (PutExactly(character)) return true;
        const NearLetter* near = FindNearLetter(character);
        if (!near) return false;
        char* const before = m_at;
        if (near->first && PutExactly(near->first) && (!near->second || PutExactly(near->second)))
            return true;
        m_at = before;
        return !near->plain || PutExactly(near->plain) || PutPlainer(near->plain);
    }

    long Finish() {
        if (m_at == m_end) return -1;
        *m_at = 0;
        return static_cast<long>(m_at - m_begin);
    }

  private:
    bool PutExactly(std::uint16_t character) {
        const unsigned cell = character < 0x80 ? character : m_page.Back(character);
        if (cell == 0 || (cell >= 0x100 && cell < kLowestPairCell)) return false;
        const int length = cell < 0x100 ? 1 : 2;
        if (m_end - m_at < length) return false;
        if (length == 2) *m_at++ = static_cast<char>(cell >> 8);
        *m_at++ = static_cast<char>(cell & 0xFF);
        return true;
    }

    // The code page may also lack the base letter.
    bool PutPlainer(std::uint16_t character) {
        const NearLetter* near = FindNearLetter(character);
        return near && near->plain && PutExactly(near->plain);
    }

    const CodePage& m_page;
    char* m_begin;
    char* m_at;
    char* m_end;
};

}  // namespace

long ToNearestText(const CodePage& page, const std::uint16_t* text, char* out, std::size_t size) {
    NearestText nearest(page, out, size);
    for (; *text; ++text)
        if (!nearest.Put(*text)) return -1;
    return nearest.Finish();
}

}  // namespace genutil
