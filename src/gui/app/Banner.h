#pragma once

#include <QWidget>

// The strip across the top of the main window: the program's name over a road running into the
// distance. Drawn in code so it stays crisp at any width and pixel ratio.
class Banner : public QWidget
{
    Q_OBJECT
public:
    explicit Banner(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Also used by the About box.
    static void paint(QPainter &painter, const QRect &rect, const QString &subtitle);

protected:
    void paintEvent(QPaintEvent *event) override;
};
