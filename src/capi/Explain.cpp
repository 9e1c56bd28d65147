#include "zovkpopup/Explain.h"

#include <memory>
#include <utility>

#include "capi/Boundary.h"
#include "capi/SizedStruct.h"

struct zovkpopup_explanation {
  zovk::ZOVKPopupExplanation content;
};

zovkpopup_status zovkpopup_explain(const char* scene, std::uint64_t scene_type,
                                   zovkpopup_explanation** explanation) {
  return zovk::guarded(__func__, [&] {
    zovk::require(explanation, "explanation");
    *explanation = nullptr;
    auto made = std::make_unique<zovkpopup_explanation>();
    made->content = zovk::ZOVKPopupExplain::explain(zovk::textOrEmpty(scene), scene_type);
    *explanation = made.release();
  });
}

const char* zovkpopup_explanation_sentence(const zovkpopup_explanation* explanation) {
  return explanation == nullptr ? nullptr : explanation->content.sentence.c_str();
}

std::size_t zovkpopup_explanation_popup_count(const zovkpopup_explanation* explanation) {
  return explanation == nullptr ? 0 : explanation->content.popups.size();
}

zovkpopup_status zovkpopup_explanation_popup(const zovkpopup_explanation* explanation,
                                             std::size_t index, zovkpopup_explained_popup* popup) {
  return zovk::guarded(__func__, [&] {
    zovk::require(explanation, "explanation");
    zovk::require(popup, "popup");
    if (index >= explanation->content.popups.size()) {
      throw zovk::Fault{ZOVKPOPUP_ERROR_ARGUMENT, "there are fewer popups"};
    }
    const zovk::ZOVKPopupExplainedPopup& found = explanation->content.popups[index];
    zovk::writeSized(*popup, {0, found.scene.c_str(), found.page.c_str(), found.verdict.c_str(),
                              found.wanted.c_str(), found.found.c_str(), found.sentence.c_str(),
                              found.rank, found.pop_id});
  });
}

void zovkpopup_explanation_free(zovkpopup_explanation* explanation) {
  delete explanation;
}
