#pragma once

#include <QComboBox>

// The vehicle drop-down; tells when its list opens and closes, which the session reacts to.
class VehicleSelector : public QComboBox
{
    Q_OBJECT
public:
    explicit VehicleSelector(QWidget *parent = nullptr);

    void showPopup() override;
    void hidePopup() override;

signals:
    void popupShown();
    void popupHidden();

private:
    bool m_open = false;
};
