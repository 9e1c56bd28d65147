#include "RatioReporter.h"

int main(int argc, char** argv) {
  return zovk::runWithClaims(
      argc, argv,
      {{"engine with 1,000 + 1,000 definitions / bare JSON parse", "CreateEngine",
        "ParseBothDocuments", 2.0},
       {"engine with 8 MiB that nobody reads / bare JSON parse", "CreateEngineOfRubbish",
        "ParseTheRubbish", 0.6},
       {"start with 10,000 stale pages / removing as many bare files", "SweepStalePages",
        "RemoveBareFiles", 2.0},
       {"merge 10,000 + 10,000 / merge 1,000 + 1,000", "MergeLists/10000", "MergeLists/1000", 12.0},
       {"havePopup, 100 pages of 64 KiB / hashing those bytes", "HavePopupFirstTime",
        "HashThePages", 1.3},
       {"havePopup again, files untouched / hashing those bytes", "HavePopupAgain", "HashThePages",
        0.05},
       {"signing and building a request / MD5 and one serialisation", "SignAndBuildRequest",
        "HashAndSerialize", 2.0}});
}
