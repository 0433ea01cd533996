#pragma once

#include <QList>
#include <QWidget>

// A row (or column) of counter tiles given by their numbers, drawn inside a dark bezel. The text it
// shows is its accessible name and tool tip, so the reading is not locked inside pictures.
class TileCounter : public QWidget
{
    Q_OBJECT
public:
    explicit TileCounter(QWidget *parent = nullptr);
    explicit TileCounter(const QList<int> &tiles, QWidget *parent = nullptr);

    // Shows the tiles; text is what they read as ("0012346", "123.05"). When it is empty the
    // text is put together from the tiles themselves.
    void setTiles(const QList<int> &tiles, const QString &text = QString());
    QList<int> tiles() const { return m_tiles; }

    // Blank drums with "No Data" over them; the tiles keep their places so the layout does not move.
    void setNoData();
    bool isNoData() const { return m_noData; }

    QString text() const;

    void setOrientation(Qt::Orientation orientation);
    Qt::Orientation orientation() const { return m_orientation; }

    // Width of the bezel drawn around the tiles, in pixels (0 for bare tiles).
    void setFrameWidth(int width);
    int frameWidth() const { return m_frameWidth; }

    // Where each tile is drawn, in widget coordinates.
    QList<QRect> tileRects() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    static QString noDataText();
    static QString textOf(const QList<int> &tiles);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void updateDescription();
    QSize tilesSize() const;

    QList<int> m_tiles;
    QString m_text;
    bool m_noData = false;
    Qt::Orientation m_orientation = Qt::Horizontal;
    int m_frameWidth = 3;
};
