#include <QString>
#include <QUrl>
#include <future>
#include <memory>
#include <nlohmann/json.hpp>
#include <unicode/uchar.h>
#include <utility>

#include "core/JsonText.h"
#include "core/Utf8.h"
#include "state/BriefServices.h"
#include "state/RemoteAlertStore.h"
#include "state/TriedChannels.h"
#include "state/URLQueryText.h"

namespace korvantis {

namespace {

/// The same for `osascript` and for both requests.
constexpr double limitSeconds = 5;
constexpr double pollSeconds = 0.05;

/// A text as it stands between the quotes of an AppleScript string. Line feeds stay.
std::string escapedForAppleScript(const std::string& text) {
  std::string escaped;
  for (const char character : text) {
    if (character == '\\' || character == '"') escaped += '\\';
    escaped += character;
  }
  return escaped;
}

std::string messagesScript(const std::string& recipient, const std::string& message) {
  return "tell application \"Messages\"\n"
         "    set targetService to 1st account whose service type = iMessage\n"
         "    set targetBuddy to participant \"" +
         escapedForAppleScript(recipient) + "\" of targetService\n    send \"" +
         escapedForAppleScript(message) + "\" to targetBuddy\nend tell";
}

std::string appleScriptError(const RunningTask& task) {
  const std::string bytes = task.readStandardErrorToEndOfFile();
  if (!isValidUtf8(bytes)) return "Unknown AppleScript error";
  return QString::fromStdString(bytes).trimmed().toStdString();
}

/// Numbers in Unicode's sense: digits of every script, fractions, ideographs for numbers.
bool isNumber(char32_t character) {
  return u_getIntPropertyValue(static_cast<UChar32>(character), UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

/// What is typed into a phone field, without what is neither a number nor "+".
QString cleanPhoneOf(const std::string& phone) {
  QString clean;
  for (const char32_t character : QString::fromStdString(phone).toStdU32String()) {
    if (isNumber(character) || character == U'+') clean += QString::fromUcs4(&character, 1);
  }
  return clean;
}

std::string digitsOf(QString cleanPhone) {
  return cleanPhone.remove(QLatin1Char('+')).toStdString();
}

bool isValidURL(const std::string& url) {
  return QUrl(QString::fromStdString(url), QUrl::StrictMode).isValid();
}

/// Has the desktop open a URL: the question goes to the main thread, this one waits for the
/// answer. False also when there is no main thread any more.
bool openOnMainThread(const BriefDeliveryCalls& calls, const std::string& url) {
  auto answer = std::make_shared<std::promise<bool>>();
  std::future<bool> opened = answer->get_future();
  calls.mainRunLoop.async([answer = std::move(answer), url, openURL = calls.workspace.openURL] {
    openURL(url, [answer](bool isOpened) { answer->set_value(isOpened); });
  });
  try {
    return opened.get();
  } catch (const std::future_error&) {
    // The question was thrown away with the main thread's other tasks.
    return false;
  }
}

std::string clickToChatURL(const std::string& digits, const std::string& encodedText) {
  return "https://" + std::string(briefServices::clickToChatHost) + "/" + digits +
         "?text=" + encodedText;
}

BriefDelivery sendOverDeepLink(const BriefDeliveryCalls& calls, const std::string& phone,
                               const std::string& digits, const std::string& encodedText) {
  const BriefDelivery failure{false, "WhatsApp failed to open URL."};
  const std::string deepLink = "whatsapp://send?phone=" + digits + "&text=" + encodedText;
  if (!isValidURL(deepLink)) return failure;
  if (openOnMainThread(calls, deepLink))
    return {true, "✓ Opened WhatsApp with pre-filled brief for " + phone};
  const std::string webLink = clickToChatURL(digits, encodedText);
  if (!isValidURL(webLink)) return failure;
  // Whether a browser came up is for the user to see.
  static_cast<void>(openOnMainThread(calls, webLink));
  return {true, "✓ Opened " + std::string(briefServices::clickToChatHost) + " WhatsApp brief for " +
                    phone};
}

BriefDelivery sendOverWebLink(const BriefDeliveryCalls& calls, const std::string& phone,
                              const std::string& digits, const std::string& encodedText) {
  const std::string webLink = clickToChatURL(digits, encodedText);
  if (!isValidURL(webLink))
    return {false, "WhatsApp: Enter API Key/Webhook or select Local App mode."};
  static_cast<void>(openOnMainThread(calls, webLink));
  return {true, "✓ Opened WhatsApp Web/App for " + phone};
}

/// The words of one of the two routes over the network.
struct RequestWords {
  const char* errorPrefix;
  const char* refused;
  std::string sent;
};

BriefDelivery sendRequest(const BriefDeliveryCalls& calls, const HTTPRequest& request,
                          const RequestWords& words) {
  const HTTPAnswer answer = calls.http.dataForRequest(request);
  if (answer.error) return {false, words.errorPrefix + *answer.error};
  const int status = answer.statusCode.value_or(0);
  if (status < 200 || status > 299) return {false, words.refused};
  return {true, words.sent};
}

BriefDelivery sendOverWebhook(const BriefDeliveryCalls& calls, const std::string& cleanPhone,
                              const std::string& webhook, const std::string& message) {
  if (!isValidURL(webhook)) return {false, "WhatsApp: Invalid custom webhook URL."};
  // Receivers read either of the two members.
  const nlohmann::ordered_json body{{"phone", cleanPhone}, {"text", message}, {"content", message}};
  const HTTPRequest request{.url = webhook,
                            .method = "POST",
                            .headers = {{"Content-Type", "application/json"}},
                            .body = jsonText(body),
                            .timeoutSeconds = limitSeconds};
  return sendRequest(calls, request,
                     {"WhatsApp Webhook Error: ", "WhatsApp Webhook returned non-200 status.",
                      "✓ Sent via WhatsApp Webhook"});
}

BriefDelivery sendOverCallMeBot(const BriefDeliveryCalls& calls, const std::string& phone,
                                const std::string& cleanPhone, const std::string& apiKey,
                                const std::string& encodedText) {
  const std::string url = "https://" + std::string(briefServices::callMeBotHost) +
                          "/whatsapp.php?phone=" + urlQueryEncoded(cleanPhone) +
                          "&text=" + encodedText + "&apikey=" + urlQueryEncoded(apiKey);
  if (!isValidURL(url)) return {false, "WhatsApp: Invalid CallMeBot URL parameters."};
  const HTTPRequest request{
      .url = url, .method = "GET", .headers = {}, .body = {}, .timeoutSeconds = limitSeconds};
  return sendRequest(calls, request,
                     {"WhatsApp API Error: ", "WhatsApp API returned non-200 status.",
                      "✓ Sent via WhatsApp API to " + phone});
}

}  // namespace

BriefDelivery RemoteAlertStore::sendIMessageViaOSAScript(const BriefDeliveryCalls& calls,
                                                         const std::string& recipient,
                                                         const std::string& message) {
  const TaskLaunch launch = calls.tasks.launch(std::string(briefServices::osascript),
                                               {"-e", messagesScript(recipient, message)});
  if (!launch.task) return {false, "iMessage Error: " + launch.error};
  const RunningTask& task = *launch.task;
  const double deadline = calls.clock.now() + limitSeconds;
  while (task.isRunning() && calls.clock.now() < deadline) calls.background.sleep(pollSeconds);
  if (task.isRunning()) {
    task.terminate();
    return {false, "iMessage timed out (ensure Messages.app is signed into iMessage)."};
  }
  if (task.terminationStatus() == 0) return {true, "✓ Sent via iMessage to " + recipient};
  return {false, "iMessage: " + appleScriptError(task)};
}

BriefDelivery RemoteAlertStore::sendWhatsAppMessage(const BriefDeliveryCalls& calls,
                                                    const std::string& phone,
                                                    WhatsAppDeliveryMode mode,
                                                    const std::string& apiKeyOrWebhook,
                                                    const std::string& message) {
  const QString cleanPhone = cleanPhoneOf(phone);
  const std::string digits = digitsOf(cleanPhone);
  const std::string encodedText = urlQueryEncoded(message);
  if (mode == WhatsAppDeliveryMode::desktopApp)
    return sendOverDeepLink(calls, phone, digits, encodedText);
  if (namesWebhook(apiKeyOrWebhook))
    return sendOverWebhook(calls, cleanPhone.toStdString(), apiKeyOrWebhook, message);
  if (apiKeyOrWebhook.empty()) return sendOverWebLink(calls, phone, digits, encodedText);
  return sendOverCallMeBot(calls, phone, cleanPhone.toStdString(), apiKeyOrWebhook, encodedText);
}

}  // namespace korvantis
