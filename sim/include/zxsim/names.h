// The names the simulated camera answers to: its properties, commands and user
// parameters, spelled once for the device that offers them and for the driver
// code that reads and writes them.
#pragma once

/// Names of the simulated camera's properties, commands and user parameters.
namespace zxsim {

// ---- Camera settings (both setting sets)
/// Exposure time in milliseconds: an exposure range with presets; changing while auto exposure is on.
inline constexpr wchar_t kPropExposure[] = L"Exposure";
/// Bool: the driver's acquisition adjusts the exposure from every frame.
inline constexpr wchar_t kPropAutoExposure[] = L"AutoExposure";
/// Analog gain factor, 1 to 16.
inline constexpr wchar_t kPropGain[] = L"Gain";
/// Black offset in 12-bit counts, 0 to 255.
inline constexpr wchar_t kPropOffset[] = L"Offset";
/// Gamma in hundredths, 30 to 300.
inline constexpr wchar_t kPropGamma[] = L"Gamma";
/// Bool: the sensor is cooled towards kPropTemperature.
inline constexpr wchar_t kPropCooling[] = L"Cooling";
/// Target sensor temperature in degrees Celsius; unavailable while cooling is off.
inline constexpr wchar_t kPropTemperature[] = L"Temperature";
/// Pixel clock in MHz (12, 24 or 48): it limits the frame rate.
inline constexpr wchar_t kPropPixelClock[] = L"PixelClock";
/// Trigger source by its text ("Free Run", "Software", "Hardware").
inline constexpr wchar_t kPropTriggerMode[] = L"TriggerMode";
/// Readout speed: 0 low noise, 1 standard, 2 high speed.
inline constexpr wchar_t kPropReadoutMode[] = L"ReadoutMode";
/// Sensor area: 0 the full sensor, 1 its centre half (every format then covers its central quarter).
inline constexpr wchar_t kPropSensorMode[] = L"SensorMode";
/// Sharpening strength: 0, 0.5, 1 or 2.
inline constexpr wchar_t kPropSharpness[] = L"Sharpness";
/// Illumination by its value ("led", "halogen", "daylight").
inline constexpr wchar_t kPropLightSource[] = L"LightSource";
/// Free text the camera keeps.
inline constexpr wchar_t kPropCameraLabel[] = L"CameraLabel";
/// Number of acquisition buffers.
inline constexpr wchar_t kPropBufferCount[] = L"BufferCount";
/// Filter wheel slot: the index in the list of filters, not the filter's name.
inline constexpr wchar_t kPropFilterWheel[] = L"FilterWheel";

// ---- Auto-exposure targets (edited by the advanced setup)
/// Live view runs this many times shorter exposures (1 to 100), made up by gain.
inline constexpr wchar_t kPropLiveSpeedUp[] = L"LiveSpeedUp";
/// Longest live exposure in milliseconds; 0 is off (kPropLiveSpeedUp applies).
inline constexpr wchar_t kPropSpeedUpTime[] = L"SpeedUpTime";
/// Target maximum intensity in percent of full scale.
inline constexpr wchar_t kPropCaptureQuality[] = L"CaptureQuality";
/// Longest exposure auto exposure may choose, in milliseconds.
inline constexpr wchar_t kPropCaptureMaxExposure[] = L"CaptureMaxExposure";
/// Overillumination tolerance in per mille of the pixels.
inline constexpr wchar_t kPropQuantilPromile[] = L"QuantilPromile";
/// Overillumination tolerance in pixels.
inline constexpr wchar_t kPropQuantilPixels[] = L"QuantilPixels";
/// Bool: the relative tolerance (per mille) applies rather than the pixel count.
inline constexpr wchar_t kPropQuantilRelative[] = L"QuantilRelative";

// ---- Measured values (read-only, outside the setting sets)
/// Sensor temperature in degrees Celsius; changing by itself.
inline constexpr wchar_t kPropSensorTemperature[] = L"SensorTemperature";
/// Frames per second that exposure, pixel clock and sensor area allow.
inline constexpr wchar_t kPropFrameRate[] = L"FrameRate";

// ---- Commands
/// Synchronous: one frame of the set in use, handed back as the command's sample.
inline constexpr wchar_t kCmdSnap[] = L"Snap";
/// Asynchronous, with progress, status text and abort.
inline constexpr wchar_t kCmdCalibrate[] = L"Calibrate";
/// Sets the exposure to a preset; the argument is its index (0 to 4: 0.1, 1, 10, 100, 1000 ms).
inline constexpr wchar_t kCmdApplyExposurePreset[] = L"ApplyExposurePreset";
/// Back to the defaults of both sets, the formats and the ROI.
inline constexpr wchar_t kCmdRestoreFactory[] = L"RestoreFactory";

// ---- User parameters the camera answers
/// The predefined ROIs: an array of {m_iLeft, m_iTop, m_iWidth, m_iHeight[, m_wsCaption]}.
inline constexpr wchar_t kParamPredefinedROIs[] = L"PredefinedROIArray";
/// Bool, always true: live view may run the quality set.
inline constexpr wchar_t kParamQualityLivePossible[] = L"IsQualityLivePossible";
/// Query record SZxUserParam_DefineRoiQuery: may the ROI be defined now.
inline constexpr wchar_t kParamDefineRoiQuery[] = L"DefineRoiQuery";

} // namespace zxsim
