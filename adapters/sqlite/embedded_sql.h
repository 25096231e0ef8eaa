// The SQL files of this folder as texts, put here by the build.
#pragma once

namespace orve::adapters::sqlite {

extern const char* const kSchemaSql;
extern const char* const kRegistroSql;
extern const char* const kDatiDiProvaSql;

}  // namespace orve::adapters::sqlite
