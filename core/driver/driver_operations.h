#pragma once

// The touch driver library's whole contract in one table: name, parameters, and the parameters'
// names for a call. The binding, the trace, the simulated library's exports and the recording
// library of the tests are all made from it.
//
// Every operation returns a 32-bit integer. Integers are 32 bits wide on the way in as well; flags,
// modes, numbers of controllers and buffer sizes use the low 8 bits only. Text is zero-terminated,
// 8 bits a character.

#include <cstdint>

#if defined(_WIN32) && !defined(_WIN64)
#define NEXAPI_CALL __stdcall
#else
#define NEXAPI_CALL
#endif

// clang-format off
#define NEXAPI_OPERATIONS(OPERATION)                                                                                   \
  /* connection and enumeration */                                                                                     \
  OPERATION(GetExistControllers, (), ())                                                                               \
  OPERATION(GetControllerName, (std::int32_t number, char* name, std::int32_t size), (number, name, size))             \
  OPERATION(OpenController, (const char* name), (name))                                                                \
  OPERATION(CloseController, (std::int32_t handle), (handle))                                                          \
  OPERATION(DisableTouchRePort, (std::int32_t handle), (handle))                                                       \
  /* who owns the COM port */                                                                                          \
  OPERATION(CloseCOMPort, (std::int32_t handle), (handle))                                                             \
  OPERATION(ReopenCOMPort, (std::int32_t handle), (handle))                                                            \
  /* raw command channel */                                                                                            \
  OPERATION(FlushReadBuffer, (std::int32_t handle), (handle))                                                          \
  OPERATION(WriteBuffer, (std::int32_t handle, const std::uint8_t* bytes, std::int32_t count), (handle, bytes, count)) \
  OPERATION(ReadBuffer, (std::int32_t handle, std::uint8_t* bytes, std::int32_t count), (handle, bytes, count))        \
  OPERATION(ReadLength, (std::int32_t handle), (handle))                                                               \
  /* touch behaviour */                                                                                                \
  OPERATION(GetReportMode, (std::int32_t handle), (handle))                                                            \
  OPERATION(SetReportMode, (std::int32_t handle, std::int32_t mode), (handle, mode))                                   \
  OPERATION(GetReportStatus, (std::int32_t handle), (handle))                                                          \
  OPERATION(GetRotation, (std::int32_t handle), (handle))                                                              \
  OPERATION(SetRotation, (std::int32_t handle, std::int32_t rotation), (handle, rotation))                             \
  OPERATION(EnableUpSound, (std::int32_t handle, std::int32_t on), (handle, on))                                       \
  OPERATION(EnableDownSound, (std::int32_t handle, std::int32_t on), (handle, on))                                     \
  OPERATION(GetUpSoundStatus, (std::int32_t handle), (handle))                                                         \
  OPERATION(GetDownSoundStatus, (std::int32_t handle), (handle))                                                       \
  OPERATION(EnableDoubleClick, (std::int32_t handle, std::int32_t on), (handle, on))                                   \
  OPERATION(GetDoubleClickEnabled, (std::int32_t handle), (handle))                                                    \
  OPERATION(SetDoubleClickSpeed, (std::int32_t handle, std::int32_t speed), (handle, speed))                           \
  OPERATION(GetDoubleClickSpeed, (std::int32_t handle), (handle))                                                      \
  OPERATION(SetDoubleClickArea, (std::int32_t handle, std::int32_t area), (handle, area))                              \
  OPERATION(GetDoubleClickArea, (std::int32_t handle), (handle))                                                       \
  OPERATION(EnableRightClick, (std::int32_t handle, std::int32_t on), (handle, on))                                    \
  OPERATION(GetRightClickEnabled, (std::int32_t handle), (handle))                                                     \
  OPERATION(SetRightClickTime, (std::int32_t handle, std::int32_t milliseconds), (handle, milliseconds))               \
  OPERATION(GetRightClickTime, (std::int32_t handle), (handle))                                                        \
  /* calibration */                                                                                                    \
  OPERATION(SetCalPoint, (std::int32_t handle, std::int32_t point, std::int32_t samples, std::int32_t count), (handle, point, samples, count)) \
  OPERATION(CalCurrentPointReady, (std::int32_t handle, std::int32_t* raw), (handle, raw))                             \
  OPERATION(IsPenUp, (std::int32_t handle), (handle))                                                                  \
  OPERATION(StoreCalibrationData, (std::int32_t handle), (handle))                                                     \
  /* several monitors */                                                                                               \
  OPERATION(AskToSetMultiMonitor, (std::int32_t handle, std::int32_t monitor), (handle, monitor))                      \
  OPERATION(QueryMultiMonitorSetOK, (), ())
// clang-format on
