#include "aikctl/adapter/ParameterNames.h"

#include <iterator>
#include <sstream>

namespace orvo::aikctl {

namespace {

constexpr const char* kOfBoards = R"(
BRD_WIDTH BRD_HEIGHT BRD_XOFFSET BRD_YOFFSET BRD_FORMAT
BRD_PROCESS_COUNT BRD_DMA_COUNT BRD_CAMERA_PORT_COUNT
)";

constexpr const char* kOfCameras = R"(
DeviceVendorName DeviceModelName DeviceManufacturerInfo DeviceVersion DeviceFirmwareVersion
DeviceSerialNumber DeviceID DeviceUserID DeviceScanType DeviceTemperatureSelector DeviceTemperature
DeviceClockFrequency DeviceLinkSpeed DeviceLinkThroughputLimit DeviceLinkThroughputLimitMode
SensorName SensorWidth SensorHeight SensorTaps SensorDigitizationTaps WidthMax HeightMax
RegionSelector RegionMode Width Height OffsetX OffsetY LinePitch BinningSelector BinningHorizontal
BinningHorizontalMode BinningVertical BinningVerticalMode DecimationHorizontal DecimationVertical
ReverseX ReverseY PixelFormat PixelSize PixelColorFilter PixelDynamicRangeMin PixelDynamicRangeMax
TestPattern TestPatternGeneratorSelector ImageCompressionMode
AcquisitionMode AcquisitionFrameCount AcquisitionBurstFrameCount AcquisitionFrameRate
AcquisitionFrameRateEnable AcquisitionLineRate AcquisitionStatusSelector AcquisitionStatus
TriggerSelector TriggerMode TriggerSource TriggerOverlap TriggerActivation TriggerDelay
TriggerDivider TriggerMultiplier
ExposureMode ExposureTimeSelector ExposureTime ExposureAuto
LineSelector LineMode LineInverter LineStatus LineStatusAll LineSource LineFormat UserOutputSelector
UserOutputValue
CounterSelector CounterEventSource CounterValue CounterDuration TimerSelector TimerDuration
TimerDelay TimerTriggerSource
GainSelector Gain GainAuto GainAutoBalance BlackLevelSelector BlackLevel BlackLevelAuto WhiteClip
BalanceRatioSelector BalanceRatio BalanceWhiteAuto Gamma GammaEnable
LUTSelector LUTEnable LUTIndex LUTValue ColorTransformationEnable
UserSetSelector UserSetDefault UserSetDefaultSelector ChunkModeActive ChunkSelector ChunkEnable
ActionSelector ActionGroupKey ActionGroupMask PayloadSize DeviceTapGeometry
TLParamsLocked GevVersionMajor GevVersionMinor GevMACAddress GevCurrentIPAddress
GevCurrentSubnetMask GevCurrentDefaultGateway GevCurrentIPConfigurationDHCP
GevCurrentIPConfigurationPersistentIP GevLinkSpeed GevHeartbeatTimeout GevCCP
GevStreamChannelSelector GevSCPSPacketSize GevSCPD GevSCDA GevTimestampTickFrequency PtpEnable
PtpStatus GevIEEE1588 GevIEEE1588Status
)";

std::vector<std::string> words(const char* text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

}   // namespace

std::vector<std::string> boardParameterNames()
{
    return words(kOfBoards);
}

std::vector<std::string> cameraParameterNames()
{
    return words(kOfCameras);
}

}   // namespace orvo::aikctl
