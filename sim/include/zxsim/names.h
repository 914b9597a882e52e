// The names the simulated camera answers to: its properties, commands and user
// parameters, spelled once for the device that offers them and for the driver
// code that reads and writes them.
#pragma once

/// Names of the simulated camera's properties, commands and user parameters.
namespace zxsim {

// ---- Settings of both sets
inline constexpr wchar_t kPropExposure[] = L"Exposure";           ///< ms; changing while auto exposure is on
inline constexpr wchar_t kPropAutoExposure[] = L"AutoExposure";   ///< bool: the driver adjusts the exposure
inline constexpr wchar_t kPropGain[] = L"Gain";                   ///< analog factor, 1 to 16
inline constexpr wchar_t kPropOffset[] = L"Offset";               ///< black level in 12-bit counts, 0 to 255
inline constexpr wchar_t kPropGamma[] = L"Gamma";                 ///< in hundredths, 30 to 300
inline constexpr wchar_t kPropCooling[] = L"Cooling";             ///< bool: cooled towards kPropTemperature
inline constexpr wchar_t kPropTemperature[] = L"Temperature";     ///< target, degrees C; off without cooling
inline constexpr wchar_t kPropPixelClock[] = L"PixelClock";       ///< MHz (12, 24, 48): limits the frame rate
inline constexpr wchar_t kPropTriggerMode[] = L"TriggerMode";     ///< a text: "Free Run", "Software", "Hardware"
inline constexpr wchar_t kPropReadoutMode[] = L"ReadoutMode";     ///< 0 low noise, 1 standard, 2 high speed
inline constexpr wchar_t kPropSensorMode[] = L"SensorMode";       ///< 0 full sensor, 1 centre half (moves formats)
inline constexpr wchar_t kPropSharpness[] = L"Sharpness";         ///< 0, 0.5, 1 or 2
inline constexpr wchar_t kPropLightSource[] = L"LightSource";     ///< "led", "halogen" or "daylight"
inline constexpr wchar_t kPropCameraLabel[] = L"CameraLabel";     ///< free text
inline constexpr wchar_t kPropBufferCount[] = L"BufferCount";     ///< number of acquisition buffers
inline constexpr wchar_t kPropFilterWheel[] = L"FilterWheel";     ///< the slot's index, not the filter's name

// ---- Auto-exposure targets (edited by the advanced setup)
inline constexpr wchar_t kPropLiveSpeedUp[] = L"LiveSpeedUp";     ///< live exposures this many times shorter
inline constexpr wchar_t kPropSpeedUpTime[] = L"SpeedUpTime";     ///< longest live exposure in ms; 0 is off
inline constexpr wchar_t kPropCaptureQuality[] = L"CaptureQuality";           ///< target maximum, % of full scale
inline constexpr wchar_t kPropCaptureMaxExposure[] = L"CaptureMaxExposure";   ///< longest exposure to choose, ms
inline constexpr wchar_t kPropQuantilPromile[] = L"QuantilPromile";     ///< overillumination tolerance, per mille
inline constexpr wchar_t kPropQuantilPixels[] = L"QuantilPixels";       ///< overillumination tolerance, pixels
inline constexpr wchar_t kPropQuantilRelative[] = L"QuantilRelative";   ///< bool: per mille, not pixels

// ---- Measured (read-only, in no setting set)
inline constexpr wchar_t kPropSensorTemperature[] = L"SensorTemperature";   ///< degrees C; changing by itself
inline constexpr wchar_t kPropFrameRate[] = L"FrameRate";   ///< frames/s that exposure, clock and area allow

// ---- Commands
inline constexpr wchar_t kCmdSnap[] = L"Snap";             ///< one frame of the set in use, as the sample
inline constexpr wchar_t kCmdCalibrate[] = L"Calibrate";   ///< asynchronous: progress, status text, abort
inline constexpr wchar_t kCmdApplyExposurePreset[] = L"ApplyExposurePreset";   ///< argument: preset index 0 to 4
inline constexpr wchar_t kCmdRestoreFactory[] = L"RestoreFactory";   ///< defaults of both sets, formats, ROI

// ---- User parameters
inline constexpr wchar_t kParamPredefinedROIs[] = L"PredefinedROIArray";          ///< array of ROI records
inline constexpr wchar_t kParamQualityLivePossible[] = L"IsQualityLivePossible";   ///< bool, always true
inline constexpr wchar_t kParamDefineRoiQuery[] = L"DefineRoiQuery";   ///< record SZxUserParam_DefineRoiQuery

} // namespace zxsim
