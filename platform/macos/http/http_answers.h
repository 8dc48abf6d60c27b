#pragma once

#import <Foundation/Foundation.h>

#include "platform/http_session.h"

/// Gathers the answers of one session's tasks, on the main thread, and hands each to its
/// completion. A redirect is refused, which makes it the answer. A body is counted as it arrives:
/// over 8 MiB its task is ended there, and the answer has its status but no body. A head over 256
/// KiB and a body that breaks off are transport errors.
@interface NWHttpAnswers : NSObject <NSURLSessionDataDelegate>

/// To be called before the task is started.
- (void)expectAnswerOf:(NSURLSessionTask*)task then:(notewick::HttpCompletion)completion;

/// Drops the completions that have not run.
- (void)forgetAll;

@end

namespace notewick {

[[nodiscard]] TransportError transportError(NSError* error);

}  // namespace notewick
