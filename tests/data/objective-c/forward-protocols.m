// Forward declarations before, between and after what they could be taken for.
@protocol First;
@interface AfterForwardProtocol
- (void) method;
@end

@protocol Second, Third
    , Fourth;
@class AfterForwardClass, Another;
@protocol First <Second>
- (id<Third, Fourth>) methodWithProtocols: (id<Second>)argument;
@end
@protocol
    Second
@optional
+ (void) optional;
@required
- (void) required;
@property (readonly) int ofAProtocol;
@end

@class AfterForwardClass; @interface AfterForwardClass : AfterForwardProtocol <First>
@end

int FunctionWithAProtocolExpression(void)
{
    id protocol = @protocol(First);
    return protocol != 0;
}
@compatibility_alias OldName AfterForwardClass;
@implementation AfterForwardClass
@end
