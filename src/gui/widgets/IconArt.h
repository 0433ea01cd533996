#pragma once

#include <QIcon>
#include <QPixmap>

class QPainter;
class QRectF;

// The small pictures of the lists: the reminder list's line icons, the log entries' icons (by the
// record's icon index) and the maintenance form's pictures (by their resource numbers). Flat
// vector drawings on a rounded badge, drawn in code at any size.
class IconArt
{
public:
    enum class Picture {
        // reminder lines
        Welcome,
        Info,
        NothingDue,
        OpenTrips,
        DistanceOverdue,
        DaysOverdue,
        Backup,
        Restore,
        // log entries
        Fuel,
        Repair,
        OilChange,
        TuneUp,
        Transmission,
        Coolant,
        Battery,
        Brakes,
        AirFilter,
        Suspension,
        Lights,
        Exhaust,
        Inspection,
        Wash,
        AirConditioning,
        Tire,
        RotateTires,
        OpenTrip,
        ClosedTrip,
    };
    static constexpr int PictureCount = int(Picture::ClosedTrip) + 1;

    static constexpr int ReminderIconCount = 8; // reminder line icons 0..7
    static constexpr int EntryIconCount = 20; // record icon indexes 0..19
    static constexpr int DefaultRepairResource = 356;
    static constexpr int FirstChoiceResource = 357; // "I1" .. "I10" are 357 .. 366
    static constexpr int FirstPredefinedResource
        = 408; // oil, tune-up, transmission, coolant, tires: 408 .. 412

    // 0 welcome, 1 information, 2 nothing due, 3 open trips, 4 overdue by distance, 5 overdue by
    // days, 6 backup, 7 restore. Other numbers get the information picture.
    static Picture reminderPicture(int index);
    // 0 fuel, 1 (and the unused 2, 3) default repair, 4..7 the predefined repairs, 8..17 the
    // pictures of "I1".."I10", 18 open trip, 19 closed trip. Other numbers get the default repair.
    static Picture entryPicture(int iconIndex);
    // The maintenance form's resources 356..366 and 408..412; Info for any other number.
    static Picture resourcePicture(int resourceId);
    static bool isResource(int resourceId);

    static QPixmap pixmap(Picture picture, int size = 16, qreal dpr = 1.0);
    static QPixmap reminderPixmap(int index, int size = 16, qreal dpr = 1.0);
    static QPixmap entryPixmap(int iconIndex, int size = 16, qreal dpr = 1.0);
    static QPixmap resourcePixmap(int resourceId, int size = 32, qreal dpr = 1.0);

    // Scalable icons for buttons and list views; disabled state is drawn greyed.
    static QIcon icon(Picture picture);
    static QIcon reminderIcon(int index) { return icon(reminderPicture(index)); }
    static QIcon entryIcon(int iconIndex) { return icon(entryPicture(iconIndex)); }
    static QIcon resourceIcon(int resourceId) { return icon(resourcePicture(resourceId)); }

    // Draws the picture into the rectangle (kept square, centred).
    static void paint(QPainter *painter, const QRectF &rect, Picture picture);
    // Uncached rendering of a size x size picture at the given pixel ratio.
    static QImage render(Picture picture, int size, qreal dpr = 1.0);
    static void clearCache();
};
