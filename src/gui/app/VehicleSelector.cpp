#include "VehicleSelector.h"

VehicleSelector::VehicleSelector(QWidget *parent)
    : QComboBox(parent)
{
    setMinimumHeight(36);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(12);
}

void VehicleSelector::showPopup()
{
    m_open = true;
    emit popupShown();
    QComboBox::showPopup();
}

void VehicleSelector::hidePopup()
{
    QComboBox::hidePopup();
    // QComboBox also calls this when the widget merely hides (closing, destruction).
    if (!m_open)
        return;
    m_open = false;
    emit popupHidden();
}
