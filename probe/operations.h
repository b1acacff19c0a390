// Marovia Sondrel - positions of web sites in search engine results
#pragma once

#include "probe/keyword_rows.h"
#include "probe/probe.h"

namespace sondrel::probe {

// Each adds the operations of one subject.
void addTextOperations(Operations &operations);
void addEncodingOperations(Operations &operations);
void addProfileOperations(Operations &operations);
void addExtractionOperations(Operations &operations);
void addAnalysisOperations(Operations &operations);
void addCatalogueOperations(Operations &operations);
void addKeywordOperations(Operations &operations);
void addProjectOperations(Operations &operations);
void addTransferOperations(Operations &operations);
void addLookupOperations(Operations &operations);
void addSettingsOperations(Operations &operations);
void addReportOperations(Operations &operations);
void addOptimizerOperations(Operations &operations);
void addMailOperations(Operations &operations);

} // namespace sondrel::probe
