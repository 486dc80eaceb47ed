#include "PFObjectState.h"

namespace {
std::optional<QVariant> lookUp(const PFObjectState::Operations &changes, const QString &key)
{
    const auto it = changes.constFind(key);
    if (it == changes.cend())
        return std::nullopt;
    return it->isDeletion() ? QVariant() : it->value();
}
} // namespace

QVariant PFObjectState::valueForKey(const QString &key) const
{
    if (const auto pending = lookUp(operations, key))
        return *pending;
    if (const auto saving = lookUp(inFlight, key))
        return *saving;
    return serverData.value(key);
}

QStringList PFObjectState::allKeys() const
{
    QStringList keys;
    for (const QString &key : serverData.keys() + inFlight.keys() + operations.keys()) {
        if (!keys.contains(key) && hasKey(key))
            keys.append(key);
    }
    return keys;
}

PFObjectState::Operations PFObjectState::beginSave()
{
    inFlight = std::exchange(operations, {});
    return inFlight;
}

void PFObjectState::finishSave()
{
    apply(inFlight);
    inFlight.clear();
}

void PFObjectState::abandonSave()
{
    for (auto it = inFlight.cbegin(); it != inFlight.cend(); ++it) {
        if (!operations.contains(it.key()))
            operations.insert(it.key(), it.value());
    }
    inFlight.clear();
}

void PFObjectState::apply(const Operations &changes)
{
    for (auto it = changes.cbegin(); it != changes.cend(); ++it) {
        if (it->isDeletion())
            serverData.remove(it.key());
        else
            serverData.insert(it.key(), it->value());
    }
}
