#define NEW 1
#if NEW
@protocol Delegate
#else
@interface Delegate
#endif
- (void) ofTheFirstBranch;
@end

#if !NEW
@interface Other : Delegate
#else
@interface Other
#endif
{
    int variable;
}
- (int) afterConditions;
#if NEW
- (int) inOne;
#else
- (int) inOther;
#endif
- (int) half
#if NEW
    : (int)x
#else
    : (int)x other: (int)y
#endif
    ;
@end

#ifdef NEVER
@interface Never
- (int) never;
@end
#endif

#if NEW
@implementation Other
#endif
#if 0
- (int) putAway { {
/* #endif */
"
#if 1
#else
#endif
'
#elif NEW
- (int) afterConditions {
    if (1) {
#else
- (int) afterConditions {
    if (2) {
#endif
    }
    return 3;
}
- (int) inOne
#if NEW
{
    return 1;
#else
{
    return 2;
#endif
}
#  if NEW /* a comment
that goes on #else */
- (int) afterAComment { return 1; }
#  endif
#define MACRO(x) \
    - (int) x    \
    {
#pragma mark - (int) aMark {
- (int) half: (int)x { return x; }
@end
