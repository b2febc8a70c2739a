#pragma once

#include "figure.h"

// Each measures one matter and needs nothing of the others.
Figures MeasureFullLoad();
Figures MeasureGrowth();
Figures MeasureLookUps();
Figures MeasureExpand();
Figures MeasureTreeView();
Figures MeasureSorting();
Figures MeasureMemory();
Figures MeasureStoreReads();
Figures MeasureStart();
Figures MeasureLocate();
Figures MeasureSearch();
Figures MeasureCameras();
Figures MeasureEditor();
Figures MeasureWall();
Figures MeasureSite();
