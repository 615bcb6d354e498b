/* declares more000 to more200 */
