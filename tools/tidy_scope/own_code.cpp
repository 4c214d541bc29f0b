// SPDX-License-Identifier: GPL-3.0-or-later
// A plugin of clang-tidy 14 that keeps its checks to the project's own code.
//
// clang-tidy shows what it finds there alone, but looks for it in everything that a
// source includes, and the headers of GoogleTest and Qt are many times as long as a test.
// The "check" here finds nothing: it is asked about the whole of a source before anybody is
// about its parts, and strikes those off that come from a system header.
#include <clang-tidy/ClangTidyCheck.h>
#include <clang-tidy/ClangTidyModule.h>
#include <clang-tidy/ClangTidyModuleRegistry.h>
#include <clang/AST/ASTContext.h>
#include <clang/ASTMatchers/ASTMatchFinder.h>
#include <clang/ASTMatchers/ASTMatchers.h>
#include <clang/Basic/SourceManager.h>
#include <vector>

namespace {

using clang::tidy::ClangTidyCheck;

class OwnCode : public ClangTidyCheck {
 public:
  using ClangTidyCheck::ClangTidyCheck;

  void registerMatchers(clang::ast_matchers::MatchFinder* finder) override {
    finder->addMatcher(clang::ast_matchers::translationUnitDecl().bind("all"), this);
  }

  // The finder goes on to the children of the whole only behind this call.
  void check(const clang::ast_matchers::MatchFinder::MatchResult& result) override {
    const auto* const all = result.Nodes.getNodeAs<clang::TranslationUnitDecl>("all");
    std::vector<clang::Decl*> own;
    for (clang::Decl* const declaration : all->decls()) {
      const clang::SourceLocation place = declaration->getLocation();
      if (place.isValid() && !result.SourceManager->isInSystemHeader(place)) {
        own.push_back(declaration);
      }
    }
    result.Context->setTraversalScope(own);
  }
};

class Module : public clang::tidy::ClangTidyModule {
 public:
  void addCheckFactories(clang::tidy::ClangTidyCheckFactories& factories) override {
    factories.registerCheck<OwnCode>("veltrin-own-code");
  }
};

const clang::tidy::ClangTidyModuleRegistry::Add<Module> kAdded("veltrin", "The project's own code");

}  // namespace
