#pragma once

#include <QAtomicInt>
#include <QString>
#include <QStringBuilder>
#include <QStringView>

#include <utility>

// A text field of a log entry, held as one pointer to a shared, immutable text: a log of a
// million entries keeps eight of these per entry, so each costs 8 bytes instead of a QString's
// 24, an empty text costs nothing more, and the texts that repeat through a log ("Fuel",
// "Gallons", a station) are loaded once and shared (see LogArchive). Readers see a
// const QString: pass the field where a QString is expected, or call through "->".
class LogText
{
public:
    LogText() noexcept = default;
    LogText(const QString &text)
        : m_node(text.isEmpty() ? nullptr : new Node { QAtomicInt(1), text })
    { }
    LogText(QString &&text)
        : m_node(text.isEmpty() ? nullptr : new Node { QAtomicInt(1), std::move(text) })
    { }
    LogText(const LogText &other) noexcept
        : m_node(other.m_node)
    {
        if (m_node)
            m_node->ref.ref();
    }
    LogText(LogText &&other) noexcept
        : m_node(std::exchange(other.m_node, nullptr))
    { }
    LogText &operator=(const LogText &other) noexcept
    {
        LogText(other).swap(*this);
        return *this;
    }
    LogText &operator=(LogText &&other) noexcept
    {
        LogText(std::move(other)).swap(*this);
        return *this;
    }
    // item.notes = a + b, as with a QString field.
    template<typename A, typename B> LogText &operator=(const QStringBuilder<A, B> &text)
    {
        return *this = LogText(QString(text));
    }
    ~LogText()
    {
        if (m_node && !m_node->ref.deref())
            delete m_node;
    }
    void swap(LogText &other) noexcept { std::swap(m_node, other.m_node); }

    // For a loader handing out one text to many fields: a copy that the text does not count yet,
    // and the later count of such copies in one step. Until countCopies() has run, no copy may be
    // destroyed and none may leave the loading thread.
    LogText uncountedCopy() const noexcept
    {
        LogText copy;
        copy.m_node = m_node;
        return copy;
    }
    void countCopies(int copies) const noexcept
    {
        if (m_node)
            m_node->ref.fetchAndAddRelaxed(copies);
    }

    const QString &text() const noexcept { return m_node ? m_node->text : s_empty; }
    operator const QString &() const noexcept { return text(); }
    const QString *operator->() const noexcept { return &text(); }

    bool isEmpty() const noexcept { return !m_node; }
    qsizetype size() const noexcept { return text().size(); }
    void clear() noexcept { LogText().swap(*this); }

    // Two fields with the same text are equal whether or not they share it.
    friend bool operator==(const LogText &a, const LogText &b) noexcept
    {
        return a.m_node == b.m_node || a.text() == b.text();
    }
    friend bool operator==(const LogText &a, const QString &b) noexcept { return a.text() == b; }
    friend bool operator==(const LogText &a, QStringView b) noexcept { return a.text() == b; }
    friend bool operator==(const LogText &a, QLatin1StringView b) noexcept { return a.text() == b; }

private:
    struct Node
    {
        QAtomicInt ref;
        const QString text;
    };
    // Every empty field reads this one null text.
    static const QString s_empty;

    Node *m_node = nullptr;
};

// Lets a field take part in a QString concatenation ("a" + item.station + "b") like a QString.
template<> struct QConcatenable<LogText> : private QConcatenable<QString>
{
    using type = LogText;
    using ConvertTo = QString;
    enum { ExactSize = true };
    static qsizetype size(const LogText &a) { return a.size(); }
    static void appendTo(const LogText &a, QChar *&out) { QConcatenable<QString>::appendTo(a.text(), out); }
};
