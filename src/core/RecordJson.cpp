#include "core/RecordJson.h"

#include "core/AppAudioStream.h"
#include "core/AppLimit.h"
#include "core/AudioDeviceItem.h"
#include "core/EngineSnapshot.h"
#include "core/HardwareInfo.h"
#include "core/HistoricalAppSummary.h"
#include "core/JsonText.h"
#include "core/JsonValue.h"
#include "core/MutedApp.h"
#include "core/QuitSafetyResult.h"
#include "core/Reading.h"

namespace korvantis {

template <typename Record>
std::optional<std::string> encodeJson(const Record& record) {
  return jsonText(toJson(record));
}

template <typename Record>
std::optional<Record> decodeJson(std::string_view text) {
  // Not the ordered kind: its look-ups walk all keys, so a hostile object would take for ever.
  const auto json = parsedJson(text);
  return fromJson<Record>(json);
}

// Made here and nowhere else, so that only this file pays for the JSON library.
#define KORVANTIS_RECORD_JSON(Record)                            \
  template std::optional<std::string> encodeJson(const Record&); \
  template std::optional<Record> decodeJson<Record>(std::string_view)

KORVANTIS_RECORD_JSON(AgentSession);
KORVANTIS_RECORD_JSON(AppAudioStream);
KORVANTIS_RECORD_JSON(AppGroup);
KORVANTIS_RECORD_JSON(AppLimit);
KORVANTIS_RECORD_JSON(AudioDeviceItem);
KORVANTIS_RECORD_JSON(BatterySample);
KORVANTIS_RECORD_JSON(BluetoothPeripheral);
KORVANTIS_RECORD_JSON(ContainerSample);
KORVANTIS_RECORD_JSON(DevProject);
KORVANTIS_RECORD_JSON(EngineSnapshot);
KORVANTIS_RECORD_JSON(FanReading);
KORVANTIS_RECORD_JSON(HardwareInfo);
KORVANTIS_RECORD_JSON(HelperShare);
KORVANTIS_RECORD_JSON(HistoricalAppSummary);
KORVANTIS_RECORD_JSON(IdleServer);
KORVANTIS_RECORD_JSON(Insight);
KORVANTIS_RECORD_JSON(ListeningPortItem);
KORVANTIS_RECORD_JSON(MountedVolume);
KORVANTIS_RECORD_JSON(MutedApp);
KORVANTIS_RECORD_JSON(PlanLimitStatus);
KORVANTIS_RECORD_JSON(ProcessSample);
KORVANTIS_RECORD_JSON(QuitSafetyResult);
KORVANTIS_RECORD_JSON(Reading);
KORVANTIS_RECORD_JSON(SensorItem);
KORVANTIS_RECORD_JSON(SleepBlocker);
KORVANTIS_RECORD_JSON(SystemSample);
KORVANTIS_RECORD_JSON(ThermalSample);

}  // namespace korvantis
