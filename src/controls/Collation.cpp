#include "controls/Collation.h"

#include <algorithm>
#include <utility>

namespace {

std::pair<int, char32_t> weight(QChar c)
{
    if (c.isDigit())
        return {1, c.unicode()};
    if (c.isLetter())
        return {2, c.toCaseFolded().unicode()};
    return {0, c.unicode()};
}

} // namespace

int collate(QStringView left, QStringView right)
{
    const qsizetype common = std::min(left.size(), right.size());
    for (qsizetype i = 0; i < common; ++i) {
        const auto l = weight(left[i]);
        const auto r = weight(right[i]);
        if (l != r)
            return l < r ? -1 : 1;
    }
    return left.size() == right.size() ? 0 : left.size() < right.size() ? -1 : 1;
}
