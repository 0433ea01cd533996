#pragma once

#include <QString>

#include <array>

// Remembers an answer about a text field for as long as a pass over an entry list lasts. A log's
// texts are shared (a million fill-ups hold one "Fuel"), so keyed by the shared text's address the
// answer (which reminders a type names, say) is worked out once per distinct text instead of once
// per entry. Only valid while the entries it has seen are neither changed nor freed.
template<typename Value> class TextMemo
{
public:
    template<typename Compute> Value get(const QString &text, Compute &&compute)
    {
        const quintptr key = quintptr(&text);
        Slot &slot = m_slots[(key >> 4) % Slots];
        if (slot.key != key)
            slot = { key, compute(text) };
        return slot.value;
    }

private:
    struct Slot
    {
        quintptr key = 0;
        Value value {};
    };
    static constexpr size_t Slots = 61; // prime, so nearby addresses spread
    std::array<Slot, Slots> m_slots {};
};
