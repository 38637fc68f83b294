#include "registry/written_element.h"

#include <bit>

namespace TARVO {

namespace {

// What is still to be read of the bytes.
class Cursor {
  public:
    explicit Cursor(std::string_view bytes) noexcept : rest_(bytes) {}

    std::string_view rest() const noexcept { return rest_; }

    bool skip(std::string_view expected) noexcept {
        if (!rest_.starts_with(expected))
            return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    // Takes what stands in front of the first `end`. It is so near as a rule that calling the
    // view's own `find` would be most of the work.
    bool takeFront(char end, std::string_view& taken) noexcept {
        for (std::size_t i = 0; i + kBlock <= rest_.size(); i += kBlock) {
            if (const unsigned found = bitsOf(whereEqual(loadBlock(rest_.data() + i), end))) {
                taken = rest_.substr(0, i + static_cast<std::size_t>(std::countr_zero(found)));
                rest_.remove_prefix(taken.size());
                return true;
            }
        }
        return false;
    }

    // Takes a name of plain bytes.
    bool takeName(FileText& name) {
        const std::size_t size = name.takePlain<notPlainInName>(rest_.substr(0, kNear));
        rest_.remove_prefix(size);
        return size > 0;
    }

    // Takes the text in front of the next <.
    bool takeText(FileText& text) {
        std::size_t size = text.takePlain<notPlain>(rest_.substr(0, kNear));
        if (!rest_.substr(size).starts_with('<')) {
            size = rest_.find('<', size);
            if (size == std::string_view::npos)
                return false;
            text.decode(rest_.substr(0, size));
        }
        rest_.remove_prefix(size);
        return true;
    }

  private:
    static constexpr std::size_t kNear = 1024; // as far as names and texts reach as a rule

    std::string_view rest_;
};

// `cursor` stands behind the name of a value.
bool readTypeAndText(Cursor& cursor, WrittenElement& element) {
    if (!cursor.skip("\" type=\"") || !cursor.takeFront('"', element.type))
        return false;
    element.text.clear();
    return cursor.skip("\"/>") ||
           (cursor.skip("\">") && cursor.takeText(element.text) && cursor.skip("</value>"));
}

} // namespace

bool readWritten(std::string_view bytes, std::size_t& position, WrittenElement& element) {
    Cursor cursor(bytes.substr(position));
    std::string_view ignored;
    if (!cursor.takeFront('<', ignored))
        return false;
    element.position = position + ignored.size();
    element.isKey = cursor.skip("<key name=\"");
    if (!element.isKey && !cursor.skip("<value name=\""))
        return false;
    if (!cursor.takeName(element.name))
        return false;
    if (element.isKey ? !cursor.skip("\">") : !readTypeAndText(cursor, element))
        return false;
    position = bytes.size() - cursor.rest().size();
    return true;
}

} // namespace TARVO
