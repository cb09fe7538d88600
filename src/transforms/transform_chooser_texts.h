#pragma once
// The RTF texts of the transformation chooser: the explanation of why a
// transformation is advisable, and the details shown for one candidate.
#include <optional>
#include <string>

#include "transforms/catalogue.h"

namespace tarnwick {

struct ChooserExplanationItems {
  std::string layer1;  // display names
  std::string layer2;
  std::string gcs1;  // geographic systems' names
  std::string gcs2;
  std::optional<std::string> projection1;  // projected systems' names, where there is one
  std::optional<std::string> projection2;
};

std::string BuildChooserExplanation(const ChooserExplanationItems& items);

// The details of a candidate: the "No information available..." text when
// there is no candidate, name and the two systems alone when the catalogue
// has no row for it, else everything the row holds.
std::string NoTransformationDetails();
std::string TransformationDetails(const std::string& name, const std::string& spRef1, const std::string& spRef2,
                                  const CatalogueRow* row);

}  // namespace tarnwick
