#include "StatsCommand.h"

#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "CliSupport.h"
#include "session/VehicleSession.h"
#include "stats/ChartLog.h"
#include "stats/StatisticsCharts.h"
#include "widgets/GraphChart.h"

using namespace Qt::StringLiterals;

namespace {

QString colourName(const ChartColour &colour)
{
    return u"#%1"_s.arg(colour.rgb(), 6, 16, QChar(u'0'));
}

QJsonObject toJson(const ChartSeries &series, const QString &vehicle)
{
    QJsonArray figures;
    for (int i = 0; i < 4; ++i)
        figures.append(
            QJsonObject { { u"label"_s, series.labels[i] }, { u"value"_s, series.values[i].trimmed() } });
    QJsonArray lines;
    for (const ChartLine &line : series.lines) {
        QJsonArray points;
        for (const QPointF &point : line.points)
            points.append(QJsonArray { point.x(), point.y() });
        lines.append(QJsonObject {
            { u"name"_s, line.name }, { u"colour"_s, colourName(line.colour) }, { u"points"_s, points } });
    }
    return QJsonObject { { u"mode"_s, int(series.mode) },
                         { u"title"_s, series.title },
                         { u"vehicle"_s, vehicle },
                         { u"figures"_s, figures },
                         { u"xTitle"_s, series.xTitle },
                         { u"yTitle"_s, series.yTitle },
                         { u"xRange"_s, QJsonArray { series.xLower, series.xUpper } },
                         { u"yRange"_s, QJsonArray { series.yLower, series.yUpper } },
                         { u"lines"_s, lines } };
}

void printText(const ChartSeries &series, const QString &vehicle, QTextStream &out)
{
    if (!series.title.isEmpty())
        out << series.title << u'\n';
    out << u"Vehicle Analyzed: "_s << vehicle << u'\n';
    for (int i = 0; i < 4; ++i)
        out << series.labels[i] << u' ' << series.values[i].trimmed() << u'\n';
    for (const ChartLine &line : series.lines) {
        out << (line.name.isEmpty() ? u"Points:"_s : u"Points %1:"_s.arg(line.name)) << u'\n';
        for (const QPointF &point : line.points)
            out << u"  "_s << point.x() << u'\t' << point.y() << u'\n';
    }
}

} // namespace

int StatsCommand::run(const QStringList &arguments, CliEnvironment &env)
{
    QCommandLineParser parser;
    parser.addOption(CliSupport::jsonOption());
    const QCommandLineOption pngOption(u"png"_s, u"Draw the chart into FILE."_s, u"FILE"_s);
    parser.addOption(pngOption);
    if (!CliSupport::parse(parser, name(), arguments, 2, synopsis(), env))
        return 2;
    const QStringList positional = parser.positionalArguments();
    bool isNumber = false;
    const int mode = positional.value(0).toInt(&isNumber);
    if (!isNumber || mode < 0 || mode >= StatisticsCharts::ModeCount) {
        env.err << u"MODE must be a number from 0 to 7.\nUsage: tarvane-cli "_s << name() << u' '
                << synopsis() << u'\n';
        return 2;
    }
    const QString png = parser.value(pngOption);
    if (!png.isEmpty() && !qobject_cast<QGuiApplication *>(QCoreApplication::instance())) {
        env.err << u"Drawing a chart needs the graphical application.\n"_s;
        return 1;
    }

    auto session = CliSupport::startSession(env, positional.value(1), true);
    if (!session)
        return 1;
    EntryList entries;
    if (!ChartLog::read(session->dataFolder(), session->vehicle().vin, entries, env.app.reporter))
        return 1;
    const ChartInput input { session->vehicle().distanceUnit, session->vehicle().economyUnit,
                             env.app.clock.now() };
    const ChartSeries series = StatisticsCharts::build(ChartMode(mode), entries, input);
    if (!series.enoughData) {
        env.err << series.shortDataMessage << u'\n';
        return 1;
    }
    if (!png.isEmpty()) {
        QString error;
        if (!GraphChart::save(series, GraphChart::DefaultSize, 2.0, png, &error)) {
            env.err << u"Unable to save the chart to "_s << png << u": "_s << error << u'\n';
            return 1;
        }
    }
    if (parser.isSet(u"json"_s))
        env.out << QString::fromUtf8(QJsonDocument(toJson(series, session->currentVehicleName())).toJson());
    else
        printText(series, session->currentVehicleName(), env.out);
    return 0;
}
