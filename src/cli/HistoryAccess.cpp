#include "HistoryAccess.h"

#include "CliSupport.h"

using namespace Qt::StringLiterals;

bool HistoryAccess::open(CliEnvironment &env, const QString &vehicle)
{
    // Read-only: a damaged log is reported and left where it is, not moved aside.
    session = CliSupport::startSession(env, vehicle, true);
    if (!session || !session->logLoaded())
        return false;
    if (session->currentVehicleIndex() < 0) {
        env.err << u"No vehicle is selected.\n"_s;
        return false;
    }
    log = std::make_unique<DataViewLog>(session->dataFolder(), session->vehicle().vin);
    return log->load(env.app.reporter);
}

bool HistoryAccess::position(const QString &text, int *position, QTextStream &err) const
{
    bool ok = false;
    const int value = text.toInt(&ok);
    if (!ok || value < 0 || value >= int(log->entries().size())) {
        err << u"No entry at position "_s << text << u" (the log has "_s << log->entries().size()
            << u" entries).\n"_s;
        return false;
    }
    *position = value;
    return true;
}
