// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "core/failure.h"
#include "core/text_fold.h"

#include <QHash>
#include <QString>

#include <iterator>
#include <optional>
#include <utility>
#include <vector>

namespace sondrel {

/// An ordered collection whose items may have a string key. Positions count from 1; keys ignore case; a
/// duplicate key or a position outside the collection throws Failure. Look-ups by key take constant time
/// while items are only appended; an insertion or removal elsewhere costs one pass at the next look-up.
template <typename Item>
class Collection
{
public:
    qsizetype Count() const { return static_cast<qsizetype>(m_entries.size()); }
    bool isEmpty() const { return m_entries.empty(); }

    /// Appends, or inserts before the given position when that is not negative. An empty text is a key like
    /// any other. When it fails the collection is as before.
    void Add(Item item, const std::optional<QString> &key = {}, qsizetype before = -1)
    {
        Entry entry{std::nullopt, std::move(item)};
        if (key) {
            entry.key = folded(*key);
            if (positionOf(*entry.key) != 0)
                throw Failure(
                    QStringLiteral("This key is already associated with an element of this collection: ") +
                    *key);
        }
        if (before >= 0) {
            if (before < 1 || before > Count())
                throw outside(before);
            m_stale = true; // first: a stale index is harmless, one that is wrong is not
            m_entries.insert(m_entries.begin() + (before - 1), std::move(entry));
            return;
        }
        m_entries.push_back(std::move(entry));
        const auto &added = m_entries.back().key;
        if (added && !m_stale)
            m_positions.insert(*added, Count());
    }

    void Remove(qsizetype position)
    {
        if (position < 1 || position > Count())
            throw outside(position);
        const Entry &entry = m_entries[static_cast<std::size_t>(position - 1)];
        if (position != Count())
            m_stale = true;
        else if (entry.key)
            m_positions.remove(*entry.key);
        m_entries.erase(m_entries.begin() + (position - 1));
    }

    void Remove(const QString &key) { Remove(needPosition(key)); }

    /// Removes every item for which the test holds, in one pass.
    template <typename Test>
    void removeIf(Test &&test)
    {
        m_stale = true;
        std::erase_if(m_entries, [&](const Entry &entry) { return test(entry.item); });
    }

    void clear()
    {
        m_entries.clear();
        m_positions.clear();
        m_stale = false;
    }

    bool HasKey(const QString &key) const { return positionOf(folded(key)) != 0; }

    /// The item of that key, or null.
    Item *find(const QString &key)
    {
        const qsizetype position = positionOf(folded(key));
        return position == 0 ? nullptr : &m_entries[static_cast<std::size_t>(position - 1)].item;
    }
    const Item *find(const QString &key) const { return const_cast<Collection *>(this)->find(key); }

    Item &at(qsizetype position)
    {
        if (position < 1 || position > Count())
            throw outside(position);
        return m_entries[static_cast<std::size_t>(position - 1)].item;
    }
    const Item &at(qsizetype position) const { return const_cast<Collection *>(this)->at(position); }

    Item &at(const QString &key) { return at(needPosition(key)); }
    const Item &at(const QString &key) const { return const_cast<Collection *>(this)->at(key); }

private:
    struct Entry
    {
        std::optional<QString> key;
        Item item;
    };

    template <typename Inner, typename Value>
    class Iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Item;
        using difference_type = std::ptrdiff_t;
        using pointer = Value *;
        using reference = Value &;

        Iterator() = default;
        explicit Iterator(Inner inner) : m_inner(inner) {}
        Value &operator*() const { return m_inner->item; }
        Value *operator->() const { return &m_inner->item; }
        Iterator &operator++()
        {
            ++m_inner;
            return *this;
        }
        Iterator operator++(int) { return Iterator(m_inner++); }
        bool operator==(const Iterator &) const = default;

    private:
        Inner m_inner{};
    };

public:
    auto begin() { return Iterator<typename std::vector<Entry>::iterator, Item>(m_entries.begin()); }
    auto end() { return Iterator<typename std::vector<Entry>::iterator, Item>(m_entries.end()); }
    auto begin() const
    {
        return Iterator<typename std::vector<Entry>::const_iterator, const Item>(m_entries.begin());
    }
    auto end() const
    {
        return Iterator<typename std::vector<Entry>::const_iterator, const Item>(m_entries.end());
    }

private:
    static Failure outside(qsizetype position)
    {
        return Failure(QStringLiteral("Position %1 is outside the collection").arg(position));
    }

    qsizetype needPosition(const QString &key) const
    {
        const qsizetype position = positionOf(folded(key));
        if (position == 0)
            throw Failure(QStringLiteral("No element of the collection has the key: ") + key);
        return position;
    }

    qsizetype positionOf(const QString &foldedKey) const
    {
        if (m_stale) {
            m_positions.clear();
            m_positions.reserve(Count());
            qsizetype position = 0;
            for (const Entry &entry : m_entries) {
                ++position;
                if (entry.key)
                    m_positions.insert(*entry.key, position);
            }
            m_stale = false;
        }
        return m_positions.value(foldedKey, 0);
    }

    std::vector<Entry> m_entries;
    mutable QHash<QString, qsizetype> m_positions;
    mutable bool m_stale = false;
};

} // namespace sondrel
