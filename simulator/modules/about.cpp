#include "call.h"

#include "requirements.h"

#include <cstring>

namespace
{

// A text that is as long as the buffer or longer fills it and goes without a terminator, as on the unit.
template <typename Field>
ApiError getText(const char* operation, const void* handle, Field field, char* buffer, std::uint32_t length,
                 Requirement requirement = nothingNeeded)
{
    const Reading work = [&](const Unit& unit)
    {
        const ApiError lack = requirement(unit);
        if (lack == success)
            std::strncpy(buffer, field(unit).c_str(), length);
        return lack;
    };
    return reading(operation, handle, work, TextOut{buffer, length});
}

} // namespace

AboutHandle GetAbout()
{
    return obtain<AboutHandle>(__func__);
}

ApiError About_release(AboutHandle about)
{
    return releaseHandle(__func__, about);
}

ApiError About_getUnitSerial(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.unitSerial; }, buffer, length);
}

ApiError About_getMainPCBSerial(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.mainPcbSerial; }, buffer, length);
}

ApiError About_getMainPCBArt(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.mainPcbArticle; }, buffer, length);
}

ApiError About_getMainManufacturingDate(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.mainManufacturingDate; }, buffer,
        length);
}

ApiError About_getMainHWversion(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.mainHwVersion; }, buffer, length);
}

ApiError About_getMainProdRev(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.mainProductRevision; }, buffer,
        length);
}

ApiError About_getMainProdArtNr(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.mainProductArticle; }, buffer,
        length);
}

ApiError About_getNrOfCANConnections(AboutHandle about, std::uint8_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.canConnections; }, count);
}

ApiError About_getNrOfETHConnections(AboutHandle about, std::uint8_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.ethernetConnections; }, count);
}

ApiError About_getNrOfSerialConnections(AboutHandle about, std::uint8_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.serialConnections; }, count);
}

ApiError About_getNrOfUSBConnections(AboutHandle about, std::uint8_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.usbConnections; }, count);
}

ApiError About_getNrOfVideoConnections(AboutHandle about, std::uint8_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.videoConnections; }, count);
}

ApiError About_getNrOfDigIOConnections(AboutHandle about, std::uint8_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.digitalIoConnections; }, count);
}

ApiError About_getNrOfCfgInConnections(AboutHandle about, std::uint8_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.configurableInputs; }, count);
}

ApiError About_getNrOfPWMOutConnections(AboutHandle about, std::uint8_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.pwmOutputs; }, count);
}

ApiError About_getNrOfButtons(AboutHandle about, std::int32_t* count)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.buttons; }, count);
}

ApiError About_getIsDisplayAvailable(AboutHandle about, std::uint8_t* available)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.display; }, available);
}

ApiError About_getIsTouchScreenAvailable(AboutHandle about, std::uint8_t* available)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.about.touchScreen; }, available);
}

ApiError About_getAddOnPCBSerial(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.addOnBoard.pcbSerial; }, buffer, length,
        addOnBoardNeeded);
}

ApiError About_getAddOnPCBArt(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.addOnBoard.pcbArticle; }, buffer, length,
        addOnBoardNeeded);
}

ApiError About_getAddOnManufacturingDate(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.addOnBoard.manufacturingDate; }, buffer,
        length, addOnBoardNeeded);
}

ApiError About_getAddOnHWversion(AboutHandle about, char* buffer, std::uint32_t length)
{
    return getText(
        __func__, about, [](const Unit& unit) -> auto& { return unit.addOnBoard.hwVersion; }, buffer, length,
        addOnBoardNeeded);
}

ApiError About_getIsBTMounted(AboutHandle about, std::uint8_t* mounted)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.addOnBoard.bluetooth; }, mounted,
        addOnBoardNeeded);
}

ApiError About_getIsGPRSMounted(AboutHandle about, std::uint8_t* mounted)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.addOnBoard.gprs; }, mounted,
        addOnBoardNeeded);
}

ApiError About_getIsGPSMounted(AboutHandle about, std::uint8_t* mounted)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.addOnBoard.gps; }, mounted,
        addOnBoardNeeded);
}

ApiError About_getIsWLANMounted(AboutHandle about, std::uint8_t* mounted)
{
    return getField(
        __func__, about, [](const Unit& unit) -> auto& { return unit.addOnBoard.wlan; }, mounted,
        addOnBoardNeeded);
}
