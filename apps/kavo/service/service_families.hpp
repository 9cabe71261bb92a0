// The families that make up the table of services.
#pragma once

#include <span>

#include "service/service.hpp"

namespace kavo_app {

/// One row for each service; `call` hands its inputs to the export and the export's results back.
std::span<const Service> CogoServices();
std::span<const Service> IntersectServices();
std::span<const Service> MeasureServices();
std::span<const Service> OffsetServices();
std::span<const Service> ReferenceServices();
std::span<const Service> PlaneServices();
std::span<const Service> StationServices();
std::span<const Service> AdjustmentServices();
std::span<const Service> CheckServices();

}  // namespace kavo_app
