#include "core/LocalizedOrder.h"

#include <string_view>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/stringpiece.h>

namespace korvantis {
namespace {

/// The environment's language. Without one the C library says "POSIX", whose order by bytes nobody
/// wants to read; the root order is what most languages share.
icu::Locale languageOfUser() {
  const icu::Locale locale = icu::Locale::getDefault();
  return std::string_view(locale.getVariant()) == "POSIX" ? icu::Locale::getRoot() : locale;
}

/// Never destroyed: ticks may still compare while the program ends.
const icu::Collator* makeCollator() {
  UErrorCode status = U_ZERO_ERROR;
  icu::Collator* const collator = icu::Collator::createInstance(languageOfUser(), status);
  if (U_FAILURE(status) != 0 || collator == nullptr) return nullptr;
  // Accents tell texts apart, case does not.
  collator->setStrength(icu::Collator::SECONDARY);
  return collator;
}

}  // namespace

int compareLocalizedCaseInsensitive(const std::string& left, const std::string& right) {
  static const icu::Collator* const collator = makeCollator();
  if (collator == nullptr) return left.compare(right);
  UErrorCode status = U_ZERO_ERROR;
  const UCollationResult order = collator->compareUTF8(left, right, status);
  return U_FAILURE(status) != 0 ? left.compare(right) : order;
}

}  // namespace korvantis
