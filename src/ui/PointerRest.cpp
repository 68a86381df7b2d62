#include "ui/PointerRest.h"

namespace brindle {

void PointerRest::setClock(Clock *clock)
{
    if (clock == m_clock)
        return;
    m_clock = clock;
    await();
    Q_EMIT clockChanged();
}

void PointerRest::setPointed(bool pointed)
{
    if (pointed == m_isPointed)
        return;
    m_isPointed = pointed;
    await();
    Q_EMIT isPointedChanged();
}

void PointerRest::dismiss()
{
    m_rest.cancel();
    setRested(false);
}

void PointerRest::await()
{
    dismiss();
    if (m_isPointed && m_clock)
        m_rest = m_clock->scheduler().after(patience, [this] { setRested(true); });
}

void PointerRest::setRested(bool rested)
{
    if (rested == m_hasRested)
        return;
    m_hasRested = rested;
    Q_EMIT hasRestedChanged();
}

} // namespace brindle
