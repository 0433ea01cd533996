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
    emit popupShown();
    QComboBox::showPopup();
}

void VehicleSelector::hidePopup()
{
    QComboBox::hidePopup();
    emit popupHidden();
}
