#include "IconArt.h"

#include "IconFigures.h"

#include <QHash>
#include <QIconEngine>
#include <QImage>
#include <QPainter>

#include <cmath>

namespace {

using Picture = IconArt::Picture;

QHash<quint64, QPixmap> &cache()
{
    static QHash<quint64, QPixmap> pixmaps;
    return pixmaps;
}

// Icons for buttons and lists: drawn at whatever size is asked, greyed when disabled.
class ArtIconEngine : public QIconEngine
{
public:
    explicit ArtIconEngine(Picture picture)
        : m_picture(picture)
    { }
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        if (mode == QIcon::Disabled) {
            const qreal dpr = painter->device() ? painter->device()->devicePixelRatioF() : 1.0;
            painter->drawImage(rect,
                               greyed(IconArt::render(m_picture, qMin(rect.width(), rect.height()), dpr)));
            return;
        }
        IconArt::paint(painter, rect, m_picture);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1.0);
    }
    // QIcon asks with the size already in device pixels.
    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        const int side = qMax(1, qRound(qMin(size.width(), size.height()) / scale));
        if (mode == QIcon::Disabled) {
            QPixmap pixmap = QPixmap::fromImage(greyed(IconArt::render(m_picture, side, scale)));
            pixmap.setDevicePixelRatio(scale);
            return pixmap;
        }
        return IconArt::pixmap(m_picture, side, scale);
    }
    QSize actualSize(const QSize &size, QIcon::Mode, QIcon::State) override
    {
        const int side = qMin(size.width(), size.height());
        return QSize(side, side);
    }
    QIconEngine *clone() const override { return new ArtIconEngine(m_picture); }
    QString key() const override { return QStringLiteral("TarvaneArt"); }

private:
    static QImage greyed(QImage image)
    {
        image = image.convertToFormat(QImage::Format_ARGB32);
        for (int y = 0; y < image.height(); ++y) {
            auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
            for (int x = 0; x < image.width(); ++x) {
                const int grey = qGray(row[x]);
                row[x] = qRgba(grey, grey, grey, qAlpha(row[x]) * 2 / 5);
            }
        }
        return image;
    }

    Picture m_picture;
};

} // namespace

IconArt::Picture IconArt::reminderPicture(int index)
{
    static constexpr Picture pictures[ReminderIconCount]
        = { Picture::Welcome,         Picture::Info,        Picture::NothingDue, Picture::OpenTrips,
            Picture::DistanceOverdue, Picture::DaysOverdue, Picture::Backup,     Picture::Restore };
    return index >= 0 && index < ReminderIconCount ? pictures[index] : Picture::Info;
}

IconArt::Picture IconArt::entryPicture(int iconIndex)
{
    if (iconIndex == 0)
        return Picture::Fuel;
    if (iconIndex >= 4 && iconIndex <= 7)
        return resourcePicture(FirstPredefinedResource + iconIndex - 4);
    if (iconIndex >= 8 && iconIndex <= 17)
        return resourcePicture(FirstChoiceResource + iconIndex - 8);
    if (iconIndex == 18)
        return Picture::OpenTrip;
    if (iconIndex == 19)
        return Picture::ClosedTrip;
    return Picture::Repair;
}

bool IconArt::isResource(int resourceId)
{
    return (resourceId >= DefaultRepairResource && resourceId <= FirstChoiceResource + 9)
        || (resourceId >= FirstPredefinedResource && resourceId <= FirstPredefinedResource + 4);
}

IconArt::Picture IconArt::resourcePicture(int resourceId)
{
    // "I10" is a tyre, so the data view's picture for index 17 suits "Rotate Tires" as well.
    static constexpr Picture choices[10]
        = { Picture::Battery,         Picture::Brakes,  Picture::AirFilter,  Picture::Suspension,
            Picture::Lights,          Picture::Exhaust, Picture::Inspection, Picture::Wash,
            Picture::AirConditioning, Picture::Tire };
    static constexpr Picture predefined[5] = { Picture::OilChange, Picture::TuneUp, Picture::Transmission,
                                               Picture::Coolant, Picture::RotateTires };
    if (resourceId == DefaultRepairResource)
        return Picture::Repair;
    if (resourceId >= FirstChoiceResource && resourceId < FirstChoiceResource + 10)
        return choices[resourceId - FirstChoiceResource];
    if (resourceId >= FirstPredefinedResource && resourceId < FirstPredefinedResource + 5)
        return predefined[resourceId - FirstPredefinedResource];
    return Picture::Info;
}

void IconArt::paint(QPainter *painter, const QRectF &rect, Picture picture)
{
    const qreal side = qMin(rect.width(), rect.height());
    if (side <= 0)
        return;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.center().x() - side / 2.0, rect.center().y() - side / 2.0);
    painter->scale(side / 32.0, side / 32.0);
    IconFigures::draw(*painter, picture);
    painter->restore();
}

QImage IconArt::render(Picture picture, int size, qreal dpr)
{
    if (size <= 0 || !(dpr > 0.0))
        return QImage();
    const int pixels = qCeil(size * dpr);
    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter p(&image);
        paint(&p, QRectF(0, 0, pixels, pixels), picture);
    }
    image.setDevicePixelRatio(dpr);
    return image;
}

QPixmap IconArt::pixmap(Picture picture, int size, qreal dpr)
{
    if (size <= 0 || !(dpr > 0.0))
        return QPixmap();
    const quint64 key
        = (quint64(int(picture)) << 48) | (quint64(quint32(size)) << 16) | quint64(qRound(dpr * 100.0));
    auto it = cache().constFind(key);
    if (it != cache().constEnd())
        return *it;
    QPixmap result = QPixmap::fromImage(render(picture, size, dpr));
    result.setDevicePixelRatio(dpr);
    cache().insert(key, result);
    return result;
}

QPixmap IconArt::reminderPixmap(int index, int size, qreal dpr)
{
    return pixmap(reminderPicture(index), size, dpr);
}

QPixmap IconArt::entryPixmap(int iconIndex, int size, qreal dpr)
{
    return pixmap(entryPicture(iconIndex), size, dpr);
}

QPixmap IconArt::resourcePixmap(int resourceId, int size, qreal dpr)
{
    return pixmap(resourcePicture(resourceId), size, dpr);
}

QIcon IconArt::icon(Picture picture)
{
    return QIcon(new ArtIconEngine(picture));
}

void IconArt::clearCache()
{
    cache().clear();
}
