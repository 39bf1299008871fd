// Readers for tests, which record the calls.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "VRELEntityReader.h"
#include "VRELFormatReader.h"
#include "VRELSectionReader.h"

namespace recording {

using Journal = std::vector<std::string>;

class Entity : public VRELEntityReader {
 public:
  Entity(VRELBufferHandle source, int id, long result, Journal& book)
      : VRELEntityReader(source), outcome(result), journal(book) {
    entityId = id;
    entityRoot = id == 1;
  }

  VRINResult ReadEntity() override {
    journal.push_back("read " + std::to_string(entityId));
    return outcome;
  }
  VRINResult Proprocess(VRELSectionReader*) override {
    journal.push_back("proprocess " + std::to_string(entityId));
    return VREL_S_OK;
  }

 private:
  long outcome;
  Journal& journal;
};

class Section : public VRELSectionReader {
 public:
  // Creates an entity for each result, with ids from firstId.
  Section(VRELBufferHandle source, int firstId, std::vector<long> const& results, Journal& book)
      : VRELSectionReader(source), journal(book) {
    for (long const result : results) {
      entities.push_back(std::make_unique<Entity>(source, firstId++, result, book));
      entityList.add(entities.back().get());
    }
  }

  VRINResult PreProcess(VRELFormatReader* reader) override {
    preparedBy = reader;
    journal.push_back("prepare section of " + std::to_string(entityList.size()));
    return VREL_E_ERROR;
  }

  VRELFormatReader* preparedBy = nullptr;
  std::vector<std::unique_ptr<Entity>> entities;

 private:
  Journal& journal;
};

class Format : public VRELFormatReader {
 public:
  // Starts with a buffer, unless `hasBuffer` is false, and without sections.
  explicit Format(Journal& book, bool hasBuffer = true) : VRELFormatReader(VRELFileHandle()), journal(book) {
    if (hasBuffer) buffer = VRELBufferHandle(new VRELBuffer(file));
  }

  Section& AddHeader(int firstId, std::vector<long> const& results) { return Add(headerSections, firstId, results); }
  Section& AddData(int firstId, std::vector<long> const& results) { return Add(dataSections, firstId, results); }

  VRINResult PreprocessData() override {
    journal.push_back("prepare data");
    return VREL_E_ERROR;
  }

 private:
  Section& Add(VRELDynamicArray<VRELSectionReader*>& list, int firstId, std::vector<long> const& results) {
    sections.push_back(std::make_unique<Section>(buffer, firstId, results, journal));
    list.add(sections.back().get());
    return *sections.back();
  }

  std::vector<std::unique_ptr<Section>> sections;
  Journal& journal;
};

// Returns the ids of the entities in order.
inline std::vector<int> IdsOf(VRELDynamicArray<VRELEntityReader*> const& entities) {
  std::vector<int> ids;
  for (VRELEntityReader* const entity : entities) {
    int id = -1;
    entity->GetEntityId(id);
    ids.push_back(id);
  }
  return ids;
}

}  // namespace recording
