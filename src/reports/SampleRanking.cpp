#include "reports/SampleRanking.h"

#include <QHash>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <vector>

// Why rankSampleNames is exact.
//
// Read a name as tokens: each non-digit character (upper-cased) is a token, and each run of
// digits is cut into pieces of nine from its start. sampleNameInOrder compares names token by
// token: a digit piece stands before a letter; two digit pieces compare by their length,
// where a piece followed by more digits counts as longer than any, and then by the text of
// their number; letters by their upper-case code. So the token sequences K(a) and K(b)
// decide whenever they differ within the shorter one. When one is a prefix of the other
// (or they are equal) the answer depends on the last token of the shorter name: after a
// digit piece the shorter name stands first, strictly (and two names with equal tokens that
// end in digits each want the other first); after a letter, or for the empty name, either
// may stand first. Call such a letter-ended name a floater of every name that extends it.
//
// Group the distinct names into components: a letter-ended name with every name that
// extends it (taken from the outermost such name), or else the names with one token
// sequence (case variants). Names in different components compare strictly, in the order
// of their token sequences, so at the end of the exchange sort each component fills one
// block of places, in component order. Only the order inside a component with more than
// one distinct name is open.
//
// The exchange sort moves the members of one component C only through the chain of
// champions of each step, and where a chain enters and leaves C depends on nothing but
// which places hold a smaller (L), an equal (C) or a greater (G) component. Before C's
// block begins, step i does one of three things:
//   x[i] is L: nothing happens to C.
//   x[i] is C: the chain runs through the C members before the first L after i (a prefix
//     of C's order), which is one exchange step on that prefix; its winner takes the place
//     of that L, that is, moves behind the rest of the prefix.
//   x[i] is G: if the first non-G after i is an L, C is untouched; if it is a C, the same
//     as above with that C as the start.
// The L/C/G pattern changes at no more than three places per step, so the whole pattern
// can be followed in near-linear time with "next L" and "next non-G" pointers and a count
// of members per place. Once no L is left, C's block is an exchange sort of C's members in
// their order at that time. In a component of case variants that end in digits every pair
// changes places, so that sort reverses them (and each exchange step followed by the move
// is no change at all); case variants that end in letters never change places, so a pass
// only moves its first member behind the window. In the component of a floater, the
// floaters never move during the block's sort and the others are sorted in the remaining
// places, which is the same problem again, one level down; during the passes before it, a
// pass moves the first member behind the window whatever it is, so when the others each
// have a component of their own text only the floaters' places need following.
//
// Identical names are interchangeable, so exchanges between them change nothing; only the
// text at each place matters. Comparisons inside the fast ranking use the token sequences'
// sort ranks, which give the answers of sampleNameInOrder by the rules above. The
// randomized test compares both rankings on many inputs.

namespace {

bool isDigit(QChar c)
{
    return c.unicode() >= u'0' && c.unicode() <= u'9';
}

// The character at position p (from 1) upper-cased; past the end the empty text, which is
// no digit.
QChar upperAt(const QString &s, qsizetype p)
{
    return p <= s.size() ? s.at(p - 1).toUpper() : QChar();
}

using Token = std::uint64_t;
using Key = std::vector<Token>;

constexpr Token kLetter = Token(1) << 62;

// A digit piece: its length class (the length, or 10 when more digits follow) and the text
// of its number, as base-11 digits 1 to 10 padded with 0 to nine places, so that the keys
// order as the texts do, a shorter text first when it is the prefix of the other.
Token digitToken(QStringView digits, bool moreFollow)
{
    int value = 0;
    for (QChar c : digits)
        value = value * 10 + (c.unicode() - u'0');
    char text[10];
    int length = 0;
    do {
        text[length++] = char(value % 10);
        value /= 10;
    } while (value > 0);
    Token textKey = 0;
    for (int i = 0; i < 9; ++i)
        textKey = textKey * 11 + (i < length ? Token(text[length - 1 - i] + 1) : 0);
    const Token lengthClass = moreFollow ? 10 : Token(digits.size());
    return (lengthClass << 40) | textKey;
}

// Appends the tokens of the name to out.
void tokenize(const QString &name, Key &out)
{
    qsizetype p = 0;
    const qsizetype n = name.size();
    while (p < n) {
        if (!isDigit(name.at(p))) {
            out.push_back(kLetter | name.at(p).toUpper().unicode());
            ++p;
            continue;
        }
        qsizetype run = 0;
        while (p + run < n && isDigit(name.at(p + run)))
            ++run;
        while (run > 9) {
            out.push_back(digitToken(QStringView(name).mid(p, 9), true));
            p += 9;
            run -= 9;
        }
        out.push_back(digitToken(QStringView(name).mid(p, run), false));
        p += run;
    }
}

// A token sequence held in a shared buffer.
struct KeyView {
    const Token *data = nullptr;
    quint32 size = 0; // a name has far fewer than 2^32 characters

    bool operator<(const KeyView &other) const
    {
        return std::lexicographical_compare(data, data + size, other.data, other.data + other.size);
    }
    bool operator==(const KeyView &other) const
    {
        return size == other.size && std::equal(data, data + size, other.data);
    }
};

bool isPrefix(const KeyView &prefix, const KeyView &key)
{
    return prefix.size <= key.size && std::equal(prefix.data, prefix.data + prefix.size, key.data);
}

// "Next place at or after p that is still in the set", with removal only.
class NextInSet {
public:
    NextInSet(int size, const std::vector<char> &member) : mParent(size + 1)
    {
        for (int p = 0; p <= size; ++p)
            mParent[p] = (p == size || member[p]) ? p : p + 1;
    }
    int find(int p)
    {
        while (mParent[p] != p) {
            mParent[p] = mParent[mParent[p]];
            p = mParent[p];
        }
        return p;
    }
    void remove(int p) { mParent[p] = p + 1; }

private:
    std::vector<int> mParent;
};

// Counts of marked places below a place, with marks added and taken away (a Fenwick tree).
class PlaceCount {
public:
    explicit PlaceCount(int size) : mTree(size + 1) {}
    void add(int place, int delta)
    {
        for (int i = place + 1; i < int(mTree.size()); i += i & -i)
            mTree[i] += delta;
    }
    int countBelow(int place) const
    {
        int sum = 0;
        for (int i = place; i > 0; i -= i & -i)
            sum += mTree[i];
        return sum;
    }

private:
    std::vector<int> mTree;
};

class FastRanking {
public:
    explicit FastRanking(const QVector<SampleRank> &entries);
    std::vector<int> arrangement();

private:
    struct Component {
        int lo = 0; // key ranks lo..hi
        int hi = 0;
        bool floaterRoot = false;
    };

    std::vector<int> fullSort(const std::vector<int> &sequence, int contextKey);
    std::vector<int> sortComponents(const std::vector<int> &sequence);
    std::vector<int> floaterComponentOrder(const std::vector<int> &ranks, int component, const Component &c,
                                           std::vector<int> order);
    // Follows the places of the component's members through the steps before its block and
    // calls pass(window) for each chain that runs through its first `window` members.
    void followChains(const std::vector<int> &ranks, int component, const std::function<void(int)> &pass) const;
    void exchangeStepAndMove(std::vector<int> &order, int window) const;
    // True when every member of the set that is no floater of the context key has a text of
    // its own component: their order among themselves can't change the result.
    bool othersAreSimple(const std::vector<int> &members, int contextKey) const;
    // sampleNameInOrder of the two names, from their token sequences: true when x's
    // sequence sorts first; when it sorts after, true only if y is a letter-ended prefix of
    // x; when both are equal, true for letter-ended names and for one name twice (an
    // exchange of equal texts changes nothing).
    bool inOrder(int x, int y) const
    {
        const int kx = keyOf(x);
        const int ky = keyOf(y);
        if (kx < ky)
            return true;
        if (kx > ky)
            return !mDigitEnded[ky] && kx <= mSubtreeEnd[ky];
        return !mDigitEnded[kx] || mStringOf[x] == mStringOf[y];
    }
    int keyOf(int element) const { return mKeyOfString[mStringOf[element]]; }

public:
    // The distinct name of an entry (entries with the same text share one).
    int stringOf(int entry) const { return mStringOf[size_t(entry)]; }
    int stringCount() const { return int(mStrings.size()); }

private:
    int mCount = 0;
    std::vector<int> mStringOf;    // per element
    QVector<QString> mStrings;     // distinct names
    std::vector<int> mKeyOfString; // key rank of each distinct name
    std::vector<char> mDigitEnded; // per key rank
    std::vector<int> mSubtreeEnd;  // per key rank: last rank that extends it
    int mEmptyKey = -1;
};

FastRanking::FastRanking(const QVector<SampleRank> &entries) : mCount(int(entries.size()))
{
    QHash<QString, int> ids;
    ids.reserve(mCount);
    mStringOf.resize(mCount);
    for (int i = 0; i < mCount; ++i) {
        auto it = ids.find(entries[i].name);
        if (it == ids.end()) {
            it = ids.insert(entries[i].name, int(mStrings.size()));
            mStrings.append(entries[i].name);
        }
        mStringOf[i] = it.value();
    }

    // The token sequences of all names in one buffer (at most one token a character): a
    // report ranks tens of thousands of names, and a vector each was much of the time.
    const int stringCount = int(mStrings.size());
    qsizetype characters = 0;
    for (const QString &name : std::as_const(mStrings))
        characters += name.size();
    Key tokens;
    tokens.reserve(size_t(characters));
    std::vector<size_t> starts(size_t(stringCount) + 1);
    for (int s = 0; s < stringCount; ++s) {
        starts[size_t(s)] = tokens.size();
        tokenize(mStrings[s], tokens);
    }
    starts[size_t(stringCount)] = tokens.size();
    // Sorted as (key, name) pairs side by side, not as indices into the keys: this sort is
    // most of the ranking's time on the many unlike names of a large report.
    std::vector<std::pair<KeyView, int>> byKey(static_cast<size_t>(stringCount));
    for (int s = 0; s < stringCount; ++s)
        byKey[size_t(s)] = {{tokens.data() + starts[size_t(s)], quint32(starts[size_t(s) + 1] - starts[size_t(s)])}, s};
    std::sort(byKey.begin(), byKey.end(), [](const auto &a, const auto &b) { return a.first < b.first; });

    mKeyOfString.resize(stringCount);
    std::vector<const KeyView *> distinct;
    for (const auto &[key, s] : byKey) {
        if (distinct.empty() || !(*distinct.back() == key))
            distinct.push_back(&key);
        mKeyOfString[s] = int(distinct.size()) - 1;
    }

    const int keyCount = int(distinct.size());
    mDigitEnded.resize(keyCount);
    mSubtreeEnd.resize(keyCount);
    std::vector<int> open; // ranks whose subtree is still open
    for (int k = 0; k < keyCount; ++k) {
        const KeyView &key = *distinct[k];
        mDigitEnded[k] = key.size > 0 && (key.data[key.size - 1] & kLetter) == 0;
        if (key.size == 0)
            mEmptyKey = k;
        while (!open.empty() && !isPrefix(*distinct[open.back()], key)) {
            mSubtreeEnd[open.back()] = k - 1;
            open.pop_back();
        }
        open.push_back(k);
    }
    for (int k : open)
        mSubtreeEnd[k] = keyCount - 1;
}

std::vector<int> FastRanking::arrangement()
{
    std::vector<int> all(mCount);
    for (int i = 0; i < mCount; ++i)
        all[i] = i;
    return fullSort(all, mEmptyKey);
}

// The exchange sort of a sequence whose context name (the empty name at the top) either
// way with every member: its floaters keep their places, the rest is sorted in the others.
std::vector<int> FastRanking::fullSort(const std::vector<int> &sequence, int contextKey)
{
    std::vector<int> others;
    others.reserve(sequence.size());
    for (int e : sequence) {
        if (contextKey < 0 || keyOf(e) != contextKey)
            others.push_back(e);
    }
    if (others.size() == sequence.size())
        return sortComponents(sequence);

    const std::vector<int> sorted = sortComponents(others);
    std::vector<int> result(sequence.size());
    size_t next = 0;
    for (size_t p = 0; p < sequence.size(); ++p) {
        const int e = sequence[p];
        result[p] = keyOf(e) == contextKey ? e : sorted[next++];
    }
    return result;
}

// The exchange sort of a sequence with no floater of all its members.
std::vector<int> FastRanking::sortComponents(const std::vector<int> &sequence)
{
    const int n = int(sequence.size());
    std::vector<int> present;
    present.reserve(n);
    for (int e : sequence)
        present.push_back(keyOf(e));
    std::sort(present.begin(), present.end());
    present.erase(std::unique(present.begin(), present.end()), present.end());

    std::vector<Component> components;
    for (size_t i = 0; i < present.size();) {
        const int k = present[i];
        const bool hasExtensions = i + 1 < present.size() && present[i + 1] <= mSubtreeEnd[k];
        if (!mDigitEnded[k] && hasExtensions) {
            components.push_back({k, mSubtreeEnd[k], true});
            while (i < present.size() && present[i] <= mSubtreeEnd[k])
                ++i;
        } else {
            components.push_back({k, k, false});
            ++i;
        }
    }

    // The members of each component in their order, in one buffer: most components of a
    // large report are one name.
    std::vector<int> ranks(n);
    std::vector<int> firstMember(components.size() + 1);
    for (int p = 0; p < n; ++p) {
        const int k = keyOf(sequence[p]);
        const auto it = std::upper_bound(components.begin(), components.end(), k,
                                         [](int key, const Component &c) { return key < c.lo; });
        ranks[p] = int(it - components.begin()) - 1;
        ++firstMember[size_t(ranks[p]) + 1];
    }
    for (size_t c = 1; c < firstMember.size(); ++c)
        firstMember[c] += firstMember[c - 1];
    std::vector<int> members(n);
    {
        std::vector<int> next(firstMember.begin(), firstMember.end() - 1);
        for (int p = 0; p < n; ++p)
            members[size_t(next[size_t(ranks[p])]++)] = sequence[p];
    }

    std::vector<int> result;
    result.reserve(n);
    for (int c = 0; c < int(components.size()); ++c) {
        const auto begin = members.begin() + firstMember[size_t(c)];
        const auto end = members.begin() + firstMember[size_t(c) + 1];
        const int first = mStringOf[*begin];
        const bool oneName = std::all_of(begin, end, [&](int e) { return mStringOf[e] == first; });
        if (oneName) {
            result.insert(result.end(), begin, end);
            continue;
        }
        std::vector<int> order(begin, end);
        if (!components[c].floaterRoot && mDigitEnded[components[c].lo]) {
            // Case variants ending in digits: every pair changes places.
            result.insert(result.end(), order.rbegin(), order.rend());
        } else if (components[c].floaterRoot) {
            const std::vector<int> atStart = floaterComponentOrder(ranks, c, components[c], std::move(order));
            const std::vector<int> sorted = fullSort(atStart, components[c].lo);
            result.insert(result.end(), sorted.begin(), sorted.end());
        } else {
            // Case variants that end in letters: each chain only moves its first member behind
            // the others of the window, and the block itself changes nothing.
            followChains(ranks, c, [&order](int window) {
                std::rotate(order.begin(), order.begin() + 1, order.begin() + window);
            });
            result.insert(result.end(), order.begin(), order.end());
        }
    }
    return result;
}

// The order of the members of a floater's component when its block begins. The floaters
// stand either way with every other member, so a chain through the first `window` members
// moves the first of them behind the others of the window, whatever it is; when it is no
// floater, the others go through one exchange step among themselves first. Where the others
// each have a component of their own text, their order among themselves can't matter and
// only the floaters' places (and order, for floaters of different case) are followed.
std::vector<int> FastRanking::floaterComponentOrder(const std::vector<int> &ranks, int component, const Component &c,
                                                    std::vector<int> order)
{
    if (!othersAreSimple(order, c.lo)) {
        followChains(ranks, component, [this, &order](int window) { exchangeStepAndMove(order, window); });
        return order;
    }
    std::vector<char> isFloater(order.size());
    std::vector<int> floaters, others;
    for (size_t i = 0; i < order.size(); ++i) {
        isFloater[i] = keyOf(order[i]) == c.lo;
        (isFloater[i] ? floaters : others).push_back(order[i]);
    }
    const bool floatersDiffer = std::any_of(floaters.begin(), floaters.end(),
                                            [&](int e) { return mStringOf[e] != mStringOf[floaters.front()]; });
    followChains(ranks, component, [&](int window) {
        if (isFloater[0] && floatersDiffer) {
            const int placesOfFloaters = int(std::count(isFloater.begin(), isFloater.begin() + window, char(1)));
            std::rotate(floaters.begin(), floaters.begin() + 1, floaters.begin() + placesOfFloaters);
        }
        std::rotate(isFloater.begin(), isFloater.begin() + 1, isFloater.begin() + window);
    });
    size_t f = 0, o = 0;
    for (size_t i = 0; i < order.size(); ++i)
        order[i] = isFloater[i] ? floaters[f++] : others[o++];
    return order;
}

bool FastRanking::othersAreSimple(const std::vector<int> &members, int contextKey) const
{
    std::vector<std::pair<int, int>> texts; // key, text
    for (int e : members) {
        if (keyOf(e) != contextKey)
            texts.push_back({keyOf(e), mStringOf[e]});
    }
    std::sort(texts.begin(), texts.end());
    texts.erase(std::unique(texts.begin(), texts.end()), texts.end());
    for (size_t i = 0; i + 1 < texts.size(); ++i) {
        const int k = texts[i].first;
        if (texts[i + 1].first == k)
            return false; // case variants
        if (!mDigitEnded[k] && texts[i + 1].first <= mSubtreeEnd[k])
            return false; // a floater of others
    }
    return true;
}

// Follows the places of smaller (L), equal (C) and greater (G) components through the
// steps before the block of the component begins.
void FastRanking::followChains(const std::vector<int> &ranks, int component, const std::function<void(int)> &pass) const
{
    enum : char { L = 0, C = 1, G = 2 };
    const int n = int(ranks.size());
    std::vector<char> type(n);
    std::vector<char> isL(n), isNotG(n);
    PlaceCount members(n);
    for (int p = 0; p < n; ++p) {
        type[p] = ranks[p] < component ? L : (ranks[p] == component ? C : G);
        isL[p] = type[p] == L;
        isNotG[p] = type[p] != G;
        if (type[p] == C)
            members.add(p, 1);
    }
    // All members lie at or after the step's place, and the first of them is where a chain
    // enters, so the window of a pass is the count of members before the place it ends at.
    NextInSet nextL(n, isL);
    NextInSet nextNotG(n, isNotG);

    auto passThrough = [&](int from, int to) {
        // The chain passes the members from place `from` (the first) up to place `to` (an
        // L), and its winner moves there.
        pass(members.countBelow(to));
        members.add(from, -1);
        members.add(to, 1);
        type[to] = C;
        nextL.remove(to);
    };

    for (int i = 0; i < n; ++i) {
        if (nextL.find(i) == n)
            break; // no smaller component left: the block begins
        if (type[i] == L)
            continue;
        if (type[i] == C) {
            passThrough(i, nextL.find(i + 1));
            continue;
        }
        const int f = nextNotG.find(i + 1);
        if (type[f] == L) {
            type[f] = G;
            nextL.remove(f);
            nextNotG.remove(f);
        } else {
            const int to = nextL.find(f + 1);
            type[f] = G;
            nextNotG.remove(f);
            passThrough(f, to);
        }
    }
}

void FastRanking::exchangeStepAndMove(std::vector<int> &order, int window) const
{
    for (int j = 1; j < window; ++j) {
        if (!inOrder(order[0], order[j]))
            std::swap(order[0], order[j]);
    }
    std::rotate(order.begin(), order.begin() + 1, order.begin() + window);
}

} // namespace

bool SampleRanking::sampleNameInOrder(const QString &a, const QString &b)
{
    const qsizetype n = std::min(a.size(), b.size());
    qsizetype p = 1;
    while (p <= n) {
        QChar ca = upperAt(a, p);
        QChar cb = upperAt(b, p);
        if (!isDigit(ca) && !isDigit(cb)) {
            if (ca < cb)
                return true;
            if (ca > cb)
                return false;
            ++p;
            continue;
        }
        if (isDigit(cb) && !isDigit(ca))
            return false;
        if (isDigit(ca) && !isDigit(cb))
            return true;

        qsizetype j = p;
        while (isDigit(ca) && isDigit(cb) && j <= n && j - p < 9) {
            ++j;
            ca = upperAt(a, j);
            cb = upperAt(b, j);
        }
        if (isDigit(cb) && !isDigit(ca))
            return true;
        if (isDigit(ca) && !isDigit(cb))
            return false;

        const QString numberA = QString::number(a.mid(p - 1, j - p).toInt());
        const QString numberB = QString::number(b.mid(p - 1, j - p).toInt());
        const int c = QString::compare(numberA, numberB, Qt::CaseSensitive);
        if (c < 0)
            return true;
        if (c > 0)
            return false;
        if (j > n)
            return a.size() < b.size();
        p = j;
    }
    return true;
}

void SampleRanking::numberEntries(QVector<SampleRank> &entries)
{
    qint32 counter = 0;
    for (SampleRank &entry : entries) {
        if (!entry.name.isEmpty())
            ++counter;
        entry.number = counter;
    }
}

QVector<SampleRank> SampleRanking::rankByExchange(QVector<SampleRank> entries)
{
    const qsizetype n = entries.size();
    for (qsizetype i = 0; i < n; ++i) {
        for (qsizetype j = i + 1; j < n; ++j) {
            if (!sampleNameInOrder(entries[i].name, entries[j].name))
                std::swap(entries[i].name, entries[j].name);
        }
    }
    numberEntries(entries);
    return entries;
}

QVector<SampleRank> SampleRanking::rankSampleNames(QVector<SampleRank> entries)
{
    FastRanking ranking(entries);
    const std::vector<int> order = ranking.arrangement();
    QVector<SampleRank> sorted(entries.size());
    for (size_t p = 0; p < order.size(); ++p)
        sorted[qsizetype(p)].name = entries[order[p]].name;
    numberEntries(sorted);
    return sorted;
}

std::vector<qint32> SampleRanking::numbersOfEntries(const QVector<SampleRank> &entries)
{
    FastRanking ranking(entries);
    const std::vector<int> order = ranking.arrangement();
    // Numbered as numberEntries does; the first place of a name gives its number.
    std::vector<qint32> numberOfString(size_t(ranking.stringCount()), -1);
    qint32 counter = 0;
    for (const int entry : order) {
        if (!entries[entry].name.isEmpty())
            ++counter;
        qint32 &number = numberOfString[size_t(ranking.stringOf(entry))];
        if (number < 0)
            number = counter;
    }
    std::vector<qint32> numbers(size_t(entries.size()));
    for (size_t e = 0; e < numbers.size(); ++e)
        numbers[e] = numberOfString[size_t(ranking.stringOf(int(e)))];
    return numbers;
}
