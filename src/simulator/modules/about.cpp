#include "simulator/call/fields.h"

#include <cstring>

using namespace document;
using namespace simulator;

namespace
{

// A text that fills the buffer has no terminator.
template <typename Field>
ApiError getText(const Call& call, Field field, char* buffer, std::uint32_t length,
                 Requirement requirement = requireNothing)
{
    const auto work = requiring(requirement,
                                [&](const Unit& unit)
                                {
                                    std::strncpy(buffer, field(unit).c_str(), length);
                                    return success;
                                });
    return readUnit(call, work, TextOut{buffer, length});
}

} // namespace

AboutHandle GetAbout()
{
    return acquire<AboutHandle>(__func__);
}

ApiError About_release(AboutHandle about)
{
    return release({__func__, about});
}

ApiError About_getUnitSerial(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::about, &About::unitSerial>, buffer, length);
}

ApiError About_getMainPCBSerial(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::about, &About::mainPcbSerial>, buffer, length);
}

ApiError About_getMainPCBArt(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::about, &About::mainPcbArticle>, buffer, length);
}

ApiError About_getMainManufacturingDate(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::about, &About::mainManufacturingDate>, buffer, length);
}

ApiError About_getMainHWversion(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::about, &About::mainHwVersion>, buffer, length);
}

ApiError About_getMainProdRev(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::about, &About::mainProductRevision>, buffer, length);
}

ApiError About_getMainProdArtNr(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::about, &About::mainProductArticle>, buffer, length);
}

ApiError About_getNrOfCANConnections(AboutHandle about, std::uint8_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::canConnections>, count);
}

ApiError About_getNrOfETHConnections(AboutHandle about, std::uint8_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::ethernetConnections>, count);
}

ApiError About_getNrOfSerialConnections(AboutHandle about, std::uint8_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::serialConnections>, count);
}

ApiError About_getNrOfUSBConnections(AboutHandle about, std::uint8_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::usbConnections>, count);
}

ApiError About_getNrOfVideoConnections(AboutHandle about, std::uint8_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::videoConnections>, count);
}

ApiError About_getNrOfDigIOConnections(AboutHandle about, std::uint8_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::digitalIoConnections>, count);
}

ApiError About_getNrOfCfgInConnections(AboutHandle about, std::uint8_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::configurableInputs>, count);
}

ApiError About_getNrOfPWMOutConnections(AboutHandle about, std::uint8_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::pwmOutputs>, count);
}

ApiError About_getNrOfButtons(AboutHandle about, std::int32_t* count)
{
    return getField({__func__, about}, at<&Unit::about, &About::buttons>, count);
}

ApiError About_getIsDisplayAvailable(AboutHandle about, std::uint8_t* available)
{
    return getField({__func__, about}, at<&Unit::about, &About::display>, available);
}

ApiError About_getIsTouchScreenAvailable(AboutHandle about, std::uint8_t* available)
{
    return getField({__func__, about}, at<&Unit::about, &About::touchScreen>, available);
}

ApiError About_getAddOnPCBSerial(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::addOnBoard, &AddOnBoard::pcbSerial>, buffer, length,
                   requireAddOnBoard);
}

ApiError About_getAddOnPCBArt(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::addOnBoard, &AddOnBoard::pcbArticle>, buffer, length,
                   requireAddOnBoard);
}

ApiError About_getAddOnManufacturingDate(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::addOnBoard, &AddOnBoard::manufacturingDate>, buffer, length,
                   requireAddOnBoard);
}

ApiError About_getAddOnHWversion(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText({__func__, about}, at<&Unit::addOnBoard, &AddOnBoard::hwVersion>, buffer, length,
                   requireAddOnBoard);
}

ApiError About_getIsBTMounted(AboutHandle about, std::uint8_t* mounted)
{
    return getField({__func__, about}, at<&Unit::addOnBoard, &AddOnBoard::bluetooth>, mounted,
                    requireAddOnBoard);
}

ApiError About_getIsGPRSMounted(AboutHandle about, std::uint8_t* mounted)
{
    return getField({__func__, about}, at<&Unit::addOnBoard, &AddOnBoard::gprs>, mounted, requireAddOnBoard);
}

ApiError About_getIsGPSMounted(AboutHandle about, std::uint8_t* mounted)
{
    return getField({__func__, about}, at<&Unit::addOnBoard, &AddOnBoard::gps>, mounted, requireAddOnBoard);
}

ApiError About_getIsWLANMounted(AboutHandle about, std::uint8_t* mounted)
{
    return getField({__func__, about}, at<&Unit::addOnBoard, &AddOnBoard::wlan>, mounted, requireAddOnBoard);
}
